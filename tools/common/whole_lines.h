#pragma once

#include <string>

namespace QuillTool {

// The text as whole lines, none of them blank at the end, or nothing: a text may end with blank lines, or
// within a line.
std::string WholeLines(std::string text);

}  // namespace QuillTool
