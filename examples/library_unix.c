#include <dlfcn.h>
#include <string.h>

#include "library.h"

void* OpenLibrary(const char* path) {
    return dlopen(path, RTLD_NOW | RTLD_LOCAL);
}

Function FindFunction(void* library, const char* name) {
    /* The standard knows no way from an object pointer to a function pointer; the system's are the same. */
    void* const symbol = dlsym(library, name);
    Function function;
    memcpy(&function, &symbol, sizeof function);
    return function;
}

void CloseLibrary(void* library) {
    dlclose(library);
}
