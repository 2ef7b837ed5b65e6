#pragma once

#include <string>
#include <string_view>

namespace QuillTool {

// Replaces `utf8` by the text; a surrogate that stands alone becomes U+FFFD. False when memory runs out.
bool ToUtf8(std::u16string_view text, std::string& utf8);

}  // namespace QuillTool
