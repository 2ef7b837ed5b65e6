#pragma once

#include <string>
#include <string_view>

namespace QuillLive {

// The bytes that base64 text stands for (RFC 4648), as far as it is such text; padding may be missing.
std::string DecodeBase64(std::string_view text);

}  // namespace QuillLive
