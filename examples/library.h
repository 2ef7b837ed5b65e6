/* Functions of a library that is loaded at run time. Null when the library or the function is not there. */
#pragma once

typedef void (*Function)(void);

void* OpenLibrary(const char* path);
Function FindFunction(void* library, const char* name);
void CloseLibrary(void* library);
