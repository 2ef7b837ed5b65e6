#include "pages.h"

#include <algorithm>
#include <fstream>
#include <iterator>

std::optional<Pages> LoadPages(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == ".html") files.push_back(entry.path());
    }
    if (error) return std::nullopt;
    std::sort(files.begin(), files.end());

    Pages pages;
    for (const std::filesystem::path& file : files) {
        std::ifstream stream(file, std::ios::binary);
        if (!stream) return std::nullopt;
        pages.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return pages;
}
