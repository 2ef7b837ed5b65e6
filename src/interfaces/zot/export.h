#pragma once

// QUILL_API marks what the shared library exports: the public class interface and the two C functions.
// Everything else stays hidden (-fvisibility=hidden). Hosts that link the static library on Windows define
// QUILL_STATIC; the CMake package and the pkg-config file do it for them.
#if defined(_WIN32) && defined(QUILL_STATIC)
#define QUILL_API
#elif defined(_WIN32) && defined(QUILL_BUILDING)
#define QUILL_API __declspec(dllexport)
#elif defined(_WIN32)
#define QUILL_API __declspec(dllimport)
#else
#define QUILL_API __attribute__((visibility("default")))
#endif
