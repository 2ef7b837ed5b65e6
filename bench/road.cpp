// Sends every page of a folder down one stage, once: what scripts/instructions counts.
//
//   quill_road load|parse|road FOLDER
//
// "load" stops after loading; what it costs is part of the other two as well, and is subtracted there.

#include "pages.h"
#include "stages.h"

#include <cstdio>
#include <string_view>

namespace {

bool Stop(const std::string&) {
    return true;
}

using Stage = bool (*)(const std::string& page);

Stage StageNamed(std::string_view name) {
    if (name == "load") return Stop;
    if (name == "parse") return ParsePage;
    if (name == "road") return BeautifyPage;
    return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
    const Stage stage = argc == 3 ? StageNamed(argv[1]) : nullptr;
    if (stage == nullptr) {
        std::fputs("usage: quill_road load|parse|road FOLDER\n", stderr);
        return 2;
    }
    const std::optional<Pages> pages = LoadPages(argv[2]);
    if (!pages || pages->empty()) {
        std::fprintf(stderr, "quill_road: no pages in %s\n", argv[2]);
        return 1;
    }

    std::size_t bytes = 0;
    std::size_t produced = 0;
    for (const std::string& page : *pages) {
        bytes += page.size();
        produced += stage(page);
    }
    std::printf("%zu pages, %zu bytes, %zu produced something\n", pages->size(), bytes, produced);
}
