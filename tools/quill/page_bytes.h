#pragma once

#include <string>

#include "inputs.h"

namespace QuillTool {

// Replaces `bytes` by the page, unpacked when it is gzip data (its name does not matter).
// Returns what is wrong, in words for people, or nothing; if something is, `bytes` are not to be used.
std::string ReadPage(const Input& input, std::string& bytes);

}  // namespace QuillTool
