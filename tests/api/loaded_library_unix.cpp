#include "api/loaded_library.h"

#include <dlfcn.h>
#include <malloc.h>

LoadedLibrary::LoadedLibrary(const std::string& path)
    : handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {}

LoadedLibrary::~LoadedLibrary() {
    if (handle_ != nullptr) dlclose(handle_);
}

void* LoadedLibrary::Symbol(const char* name) const {
    return dlsym(handle_, name);
}

bool LoadedLibrary::StaysLoaded(const std::string& path) {
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) dlclose(handle);
    return handle != nullptr;
}

std::size_t LoadedLibrary::HeapInUse() {
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}
