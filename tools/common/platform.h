#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

// What differs between operating systems; the build chooses platform_unix.cpp or platform_windows.cpp.
//
// Text that names a file is UTF-8 on Windows and the bytes that the system gave elsewhere, so that every file
// can be named on every system.
namespace QuillTool {

std::filesystem::path PathFromText(const std::string& text);
std::string TextFromPath(const std::filesystem::path& path);

// Opens a file for binary reading ("rb") or writing ("wb"). Null, with errno set, when that fails.
std::FILE* OpenFile(const std::filesystem::path& path, const char* mode);

bool IsTerminal(std::FILE* stream);

// Whether `error`, an errno value of a failed write, says that nobody reads the other end any more.
bool IsClosedPipe(int error);

// Makes the standard streams carry bytes unchanged, and UTF-8 to the terminal until the program ends, and
// makes a write to a closed pipe fail instead of ending the process. Called once, before anything is read or
// written.
void PrepareStandardStreams();

}  // namespace QuillTool
