#pragma once

#include <cstddef>

namespace QuillTool {

// The most that the library's streams hold, in bytes.
constexpr std::size_t kMaxPageBytes = 0xFFFFFFFFu;
constexpr const char* kTooLarge = "larger than 4 GiB";

}  // namespace QuillTool
