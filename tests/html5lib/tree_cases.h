#pragma once

#include <filesystem>

#include "report.h"

namespace html5lib {

// Runs the cases of a tree-construction/*.dat file; those for scripting are skipped. False when the file
// cannot be read.
bool RunTreeCases(const std::filesystem::path& file, Report& report);

}  // namespace html5lib
