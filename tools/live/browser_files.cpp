#include "browser_files.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace QuillLive {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLastMessages = 2000;  // bytes

}  // namespace

BrowserFiles::~BrowserFiles() {
    std::error_code error;
    if (!folder_.empty()) fs::remove_all(folder_, error);
}

std::string BrowserFiles::Make() {
    std::error_code error;
    const fs::path parent = fs::temp_directory_path(error);
    if (error) return "no folder for temporary files: " + error.message();
    std::string name = (parent / "quill-live-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) return name + ": " + std::generic_category().message(errno);
    folder_ = name;
    return {};
}

std::string BrowserFiles::LastMessages() const {
    std::ifstream file(Messages(), std::ios::binary);
    std::string all{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (all.size() <= kLastMessages) return all;
    const std::size_t line = all.find('\n', all.size() - kLastMessages);
    return all.substr(line == std::string::npos ? all.size() - kLastMessages : line + 1);
}

}  // namespace QuillLive
