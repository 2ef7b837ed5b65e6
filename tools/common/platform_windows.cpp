#include "platform.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <string>
#include <windows.h>

namespace QuillTool {

std::filesystem::path PathFromText(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return std::filesystem::path(wide);
}

std::string TextFromPath(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    const int length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(), size, nullptr, nullptr);
    return text;
}

std::FILE* OpenFile(const std::filesystem::path& path, const char* mode) {
    return _wfopen(path.c_str(), std::filesystem::path(mode).c_str());
}

bool IsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

// Writing to a pipe that is being closed comes back as EINVAL.
bool IsClosedPipe(int error) {
    return error == EPIPE || error == EINVAL;
}

void PrepareStandardStreams() {
    for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    // The terminal keeps its code page beyond the program.
    static const UINT terminal_charset = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { SetConsoleOutputCP(terminal_charset); });
}

}  // namespace QuillTool
