#include "platform.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace QuillTool {

std::filesystem::path PathFromText(const std::string& text) {
    return std::filesystem::path(text);
}

std::string TextFromPath(const std::filesystem::path& path) {
    return path.string();
}

std::FILE* OpenFile(const std::filesystem::path& path, const char* mode) {
    return std::fopen(path.c_str(), mode);
}

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

bool IsClosedPipe(int error) {
    return error == EPIPE;
}

void PrepareStandardStreams() {
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace QuillTool
