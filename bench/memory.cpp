// Peak memory of one Beautify call, for each page of a folder: what the call takes from the C library and
// from the system together, above the page itself, which stands in memory before. Each page has a process of
// its own, so that nothing is kept from the page before.
//
//   quill_memory FOLDER [COUNT]
//
// Prints the bytes of the page, the peak and the quotient for the pages in the order of their size; with
// COUNT only for so many around the median, and the least, the middle and the largest of their quotients.

#include "pages.h"
#include "stages.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <malloc.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::size_t kBlockHead = 8;  // bytes that the C library's allocator needs beside a block

// Bytes held; one thread.
std::size_t held = 0;
std::size_t peak = 0;

void Hold(std::size_t bytes) {
    held += bytes;
    peak = std::max(peak, held);
}

template <class Memory>
Memory* Counted(Memory* memory) {
    if (memory != nullptr) Hold(malloc_usable_size(memory) + kBlockHead);
    return memory;
}

void Uncount(void* memory) {
    if (memory != nullptr) held -= malloc_usable_size(memory) + kBlockHead;
}

}  // namespace

// These take the place of the C library's, whose allocator maps memory for itself with functions of its own:
// what comes through mmap here is the library's pool.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void __libc_free(void* memory);

void* malloc(std::size_t size) noexcept {
    return Counted(__libc_malloc(size));
}
void* calloc(std::size_t count, std::size_t size) noexcept {
    return Counted(__libc_calloc(count, size));
}
void* realloc(void* memory, std::size_t size) noexcept {
    Uncount(memory);
    return Counted(__libc_realloc(memory, size));
}
void free(void* memory) noexcept {
    Uncount(memory);
    __libc_free(memory);
}

void* mmap(void* place, std::size_t size, int protection, int flags, int file, off_t offset) noexcept {
    Hold(size);
    return reinterpret_cast<void*>(syscall(SYS_mmap, place, size, protection, flags, file, offset));
}
int munmap(void* place, std::size_t size) noexcept {
    held -= size;
    return static_cast<int>(syscall(SYS_munmap, place, size));
}
// The target of a move was counted when it was mapped.
void* mremap(void* memory, std::size_t from, std::size_t to, int flags, ...) noexcept {
    va_list arguments;
    va_start(arguments, flags);
    void* const place = va_arg(arguments, void*);
    va_end(arguments);
    held -= from;
    return reinterpret_cast<void*>(syscall(SYS_mremap, memory, from, to, flags, place));
}
}

namespace {

// 0 when the page's process did not end well.
std::size_t PeakOf(const std::string& page) {
    int ends[2];
    if (pipe(ends) != 0) return 0;
    const pid_t child = fork();
    if (child == 0) {
        const std::size_t before = peak = held;
        BeautifyPage(page);
        const std::size_t above = peak - before;
        _exit(write(ends[1], &above, sizeof above) == sizeof above ? 0 : 1);
    }
    close(ends[1]);
    std::size_t above = 0;
    if (child < 0 || read(ends[0], &above, sizeof above) != sizeof above) above = 0;
    close(ends[0]);
    if (child > 0) waitpid(child, nullptr, 0);
    return above;
}

bool IsSmaller(const std::string& a, const std::string& b) {
    return a.size() < b.size();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fputs("usage: quill_memory FOLDER [COUNT]\n", stderr);
        return 2;
    }
    std::optional<Pages> pages = LoadPages(argv[1]);
    if (!pages || pages->empty()) {
        std::fprintf(stderr, "quill_memory: no pages in %s\n", argv[1]);
        return 1;
    }
    std::sort(pages->begin(), pages->end(), IsSmaller);
    const std::size_t all = pages->size();
    const std::size_t count =
        std::min(all, argc == 3 ? std::max<std::size_t>(1, std::strtoul(argv[2], nullptr, 10)) : all);
    const std::size_t first = (all - count) / 2;

    std::vector<double> quotients;
    std::puts("      page       peak  peak/page");
    for (std::size_t i = first; i != first + count; ++i) {
        const std::string& page = (*pages)[i];
        const std::size_t above = PeakOf(page);
        if (above == 0) return 1;
        quotients.push_back(static_cast<double>(above) / static_cast<double>(page.size()));
        std::printf("%10zu %10zu %10.2f\n", page.size(), above, quotients.back());
    }
    std::sort(quotients.begin(), quotients.end());
    std::printf("peak/page: least %.2f, middle %.2f, largest %.2f\n", quotients.front(), quotients[count / 2],
                quotients.back());
}
