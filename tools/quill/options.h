#pragma once

#include <optional>
#include <string>
#include <vector>
#include <zot/charset.h>

#include "layout.h"
#include "page_format.h"

namespace QuillTool {

// What the command line asks for.
struct Options {
    std::vector<std::string> inputs;  // never empty
    Show show = Show::kText;
    Layout layout = Layout::kAuto;
    ZOT::CHARSET charset = ZOT::kCharsetNone;
    std::string output_folder;  // empty: standard output
    unsigned int jobs = 1;
};

// Reads the command line. Returns the exit code where the program has nothing more to do: help or the version
// was printed, or the usage was wrong, which standard error then explains.
std::optional<int> ParseOptions(std::vector<std::string> arguments, Options& options);

}  // namespace QuillTool
