#pragma once

#include <optional>
#include <string>
#include <vector>

#include "live_page.h"

namespace QuillLive {

// What the command line asks for.
struct Options {
    std::string url;
    std::string browser;  // empty: the first one found
    LivePage::Patience patience;
    bool source = false;
    bool json = false;
};

// Reads the command line, without the program's name. Returns the exit code where the program has nothing
// more to do: help or the version was printed, or the usage was wrong, which standard error then explains.
std::optional<int> ParseOptions(std::vector<std::string> arguments, Options& options);

}  // namespace QuillLive
