#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "inputs.h"

namespace QuillTool {

// The file below the output folder for each input: its place, with `ending` instead of the ending of a page.
//
// No two inputs get the same file, not even where the file system does not tell capitals from small letters.
// The first one gets the short name, a later one keeps its whole name before `ending`, or its whole name and
// a number:
//
//   a.html  a.html.gz  b/a.html.gz    a.txt  a.html.gz.txt  b/a.txt
std::vector<std::filesystem::path> OutputNames(const std::vector<Input>& inputs, const std::string& ending);

}  // namespace QuillTool
