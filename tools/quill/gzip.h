#pragma once

#include <string>
#include <string_view>

namespace QuillTool {

// Whether `bytes` begin as gzip data do.
bool IsGzip(std::string_view bytes);

// Replaces `bytes` by what the gzip data `packed` hold, all members one after another; what follows the last
// member is ignored. Neither may be larger than kMaxPageBytes. Returns what is wrong, in words for people, or
// nothing; if something is, `bytes` are not to be used.
std::string Gunzip(std::string_view packed, std::string& bytes);

}  // namespace QuillTool
