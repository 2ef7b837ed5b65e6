#include "output_folder.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "platform.h"

namespace QuillTool {

namespace {

namespace fs = std::filesystem;

bool IsWithin(const fs::path& folder, const fs::path& path) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

std::string WriteFile(const fs::path& path, const std::string& bytes) {
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(path, error))) fs::remove(path, error);
    std::FILE* const file = OpenFile(path, "wb");
    if (file == nullptr) return std::generic_category().message(errno);
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const int write_error = errno;
    const bool closed = std::fclose(file) == 0;
    if (written && closed) return {};
    return std::generic_category().message(written ? errno : write_error);
}

}  // namespace

OutputFolder::OutputFolder(const std::string& name) : folder_(PathFromText(name)) {}

std::string OutputFolder::Prepare() {
    std::error_code error;
    fs::create_directories(folder_, error);
    if (!error) folder_ = fs::canonical(folder_, error);
    return error ? error.message() : std::string();
}

std::string OutputFolder::Write(const fs::path& place, const std::string& bytes) const {
    fs::path folder = folder_;
    std::string problem = EnterFolders(place.parent_path(), folder);
    if (problem.empty()) problem = WriteFile(folder / place.filename(), bytes);
    return problem.empty() ? problem : TextFromPath(folder_ / place) + ": " + problem;
}

// One step at a time, so that no folder is made behind a link that leads out.
std::string OutputFolder::EnterFolders(const fs::path& way, fs::path& folder) const {
    for (const fs::path& step : way) {
        std::error_code error;
        fs::create_directory(folder / step, error);
        if (!error) folder = fs::canonical(folder / step, error);
        if (error) return error.message();
        if (!IsWithin(folder_, folder)) return "leads out of the output folder";
    }
    return {};
}

}  // namespace QuillTool
