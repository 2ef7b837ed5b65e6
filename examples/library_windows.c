#include <windows.h>

#include "library.h"

void* OpenLibrary(const char* path) {
    return LoadLibraryA(path);
}

Function FindFunction(void* library, const char* name) {
    return (Function)GetProcAddress(library, name);
}

void CloseLibrary(void* library) {
    FreeLibrary(library);
}
