#include "browser_path.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <unistd.h>

namespace QuillLive {

namespace {

std::string FindProgram(const char* name) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string program = (std::filesystem::path(folder.empty() ? "." : folder) / name).string();
        if (IsProgram(program)) return program;
    }
    return {};
}

}  // namespace

std::string FindBrowser() {
    for (const char* const name : {"chromium", "chromium-browser", "google-chrome"}) {
        std::string program = FindProgram(name);
        if (!program.empty()) return program;
    }
    return {};
}

bool IsProgram(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

}  // namespace QuillLive
