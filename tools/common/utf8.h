#pragma once

#include <string>
#include <string_view>

namespace QuillTool {

// Replaces `utf8` by the text; a surrogate that stands alone becomes U+FFFD. False when memory runs out.
bool ToUtf8(std::u16string_view text, std::string& utf8);

// The text as UTF-16; bytes that are no UTF-8 become U+FFFD. At most 1 GiB.
std::u16string ToUtf16(std::string_view utf8);

}  // namespace QuillTool
