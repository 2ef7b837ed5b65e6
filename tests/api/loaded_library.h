#pragma once

#include <cstddef>
#include <string>

// A library that is loaded at run time, and the traces that it leaves in the process.

struct LoadedLibrary {
    explicit LoadedLibrary(const std::string& path);
    ~LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;  // one load, one unload
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    bool Loaded() const { return handle_ != nullptr; }

    // Null when there is none of that name.
    template <class Function>
    Function Find(const char* name) const {
        return reinterpret_cast<Function>(Symbol(name));
    }

    static bool StaysLoaded(const std::string& path);

    // Bytes that the process has allocated and not freed; 0 where nobody can tell.
    static std::size_t HeapInUse();

private:
    void* Symbol(const char* name) const;

    void* handle_;
};
