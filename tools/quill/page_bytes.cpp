#include "page_bytes.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "gzip.h"
#include "page_limit.h"
#include "platform.h"

namespace QuillTool {

namespace {

constexpr std::size_t kFirstRoom = std::size_t{1} << 16;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string Reason(int error) {
    return std::generic_category().message(error);
}

// Reads to the end. `expected` is a guess that saves moving the bytes about.
std::string ReadAll(std::FILE* file, std::size_t expected, std::string& bytes) {
    std::size_t size = 0;
    bytes.resize(std::max(expected + 1, kFirstRoom));  // one more than expected, so that the end is seen
    for (;;) {
        errno = 0;
        size += std::fread(bytes.data() + size, 1, bytes.size() - size, file);
        if (std::ferror(file) != 0) return Reason(errno);
        if (size > kMaxPageBytes) return kTooLarge;
        if (size < bytes.size()) break;
        bytes.resize(bytes.size() * 2);
    }
    bytes.resize(size);
    return {};
}

std::string ReadFile(const std::filesystem::path& path, std::string& bytes) {
    const std::unique_ptr<std::FILE, CloseFile> file(OpenFile(path, "rb"));
    if (!file) return Reason(errno);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) return ReadAll(file.get(), 0, bytes);  // a pipe or a device
    if (size > kMaxPageBytes) return kTooLarge;
    return ReadAll(file.get(), static_cast<std::size_t>(size), bytes);
}

}  // namespace

std::string ReadPage(const Input& input, std::string& bytes) {
    std::string problem =
        input.name == kStandardInput ? ReadAll(stdin, 0, bytes) : ReadFile(input.path, bytes);
    if (!problem.empty() || !IsGzip(bytes)) return problem;
    std::string unpacked;
    problem = Gunzip(bytes, unpacked, kMaxPageBytes);
    bytes = std::move(unpacked);
    return problem;
}

}  // namespace QuillTool
