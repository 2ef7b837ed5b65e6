#pragma once

#include <string>
#include <vector>

namespace QuillTool {

// The whole program: `arguments` without the program's name, as platform.h has them. Returns the exit code.
int Main(std::vector<std::string> arguments);

}  // namespace QuillTool
