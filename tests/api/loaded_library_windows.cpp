#include "api/loaded_library.h"

#include <windows.h>

LoadedLibrary::LoadedLibrary(const std::string& path) : handle_(LoadLibraryA(path.c_str())) {}

LoadedLibrary::~LoadedLibrary() {
    if (handle_ != nullptr) FreeLibrary(static_cast<HMODULE>(handle_));
}

void* LoadedLibrary::Symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

bool LoadedLibrary::StaysLoaded(const std::string& path) {
    return GetModuleHandleA(path.c_str()) != nullptr;
}

std::size_t LoadedLibrary::HeapInUse() {
    return 0;
}
