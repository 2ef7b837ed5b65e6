#include "pages.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <system_error>
#include <utility>

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
        const std::uintmax_t size = std::filesystem::file_size(file, error);
        if (error) return std::nullopt;
        std::string page(size, '\0');
        if (!std::ifstream(file, std::ios::binary)
                 .read(page.data(), static_cast<std::streamsize>(page.size()))) {
            return std::nullopt;
        }
        pages.push_back(std::move(page));
    }
    return pages;
}
