#pragma once

#include <string>
#include <vector>

namespace QuillLive {

// The whole program: `arguments` without the program's name. Returns the exit code.
int Main(std::vector<std::string> arguments);

}  // namespace QuillLive
