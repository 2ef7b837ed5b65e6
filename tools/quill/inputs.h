#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "console.h"

namespace QuillTool {

// The argument that stands for standard input, and its name.
constexpr const char* kStandardInput = "-";

// One page to read.
struct Input {
    std::string name;  // as the user knows it: kStandardInput, or the path as it was given or found
    std::filesystem::path path;
    std::filesystem::path place;  // where it stands below the folder that was named; its file name for a file
};

// The pages that `arguments` name, in the order of the arguments. A folder stands for the pages in it and
// below it, name by name in byte order; links to folders are not followed. Folders that cannot be read become
// errors of `console`, a folder without pages a note. Whether a named file can be read shows when it is read.
std::vector<Input> FindInputs(const std::vector<std::string>& arguments, Console& console);

}  // namespace QuillTool
