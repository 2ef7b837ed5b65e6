#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace QuillTool {

// Whether `bytes` begin as gzip data do.
bool IsGzip(std::string_view bytes);

// Up to this size memory just grows. What unpacks to more is first counted without keeping it, so that a
// small file made to fill the memory is refused before it does.
constexpr std::size_t kUncountedRoom = std::size_t{1} << 26;

// Replaces `bytes` by what the gzip data `packed` hold, all members one after another; what follows the last
// member is ignored. `packed` is not larger than kMaxPageBytes, and no more than `most` bytes, which is at
// least kUncountedRoom, are unpacked. Returns what is wrong, in words for people, or nothing; if something
// is, `bytes` are not to be used.
std::string Gunzip(std::string_view packed, std::string& bytes, std::size_t most);

}  // namespace QuillTool
