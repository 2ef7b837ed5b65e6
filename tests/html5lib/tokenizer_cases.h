#pragma once

#include <filesystem>

#include "report.h"

namespace html5lib {

// Runs the cases of a tokenizer/*.test file, each in all its initial states. False when the file cannot be
// read.
bool RunTokenizerCases(const std::filesystem::path& file, Report& report);

}  // namespace html5lib
