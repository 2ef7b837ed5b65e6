#include "properties/corpus.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <zlib.h>

namespace fs = std::filesystem;

namespace {

std::size_t Every() {
    const char* const every = std::getenv("QUILL_CORPUS_EVERY");
    return every == nullptr ? 10 : std::max(1ul, std::strtoul(every, nullptr, 10));
}

}  // namespace

fs::path CorpusFolder() {
    return fs::path(QUILL_SHARED_DIR) / "corpus";
}

std::vector<fs::path> CorpusPages() {
    std::vector<fs::path> all;
    std::error_code none;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(CorpusFolder(), none)) {
        if (entry.path().filename().string().ends_with(".html.gz")) all.push_back(entry.path());
    }
    std::sort(all.begin(), all.end());
    std::vector<fs::path> pages;
    for (std::size_t i = 0; i < all.size(); i += Every()) pages.push_back(all[i]);
    return pages;
}

std::string Unpacked(const fs::path& page) {
    const gzFile file = gzopen(page.string().c_str(), "rb");
    std::string bytes;
    char piece[1 << 16];
    int read = 0;
    while ((read = gzread(file, piece, sizeof piece)) > 0)
        bytes.append(piece, static_cast<std::size_t>(read));
    if (gzclose(file) != Z_OK || read < 0) throw std::runtime_error("cannot read " + page.string());
    return bytes;
}
