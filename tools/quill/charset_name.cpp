#include "charset_name.h"

#include <charconv>

namespace QuillTool {

namespace {

bool CharsetFromNumber(const std::string& name, ZOT::CHARSET& charset) {
    int number = 0;
    const char* const end = name.data() + name.size();
    const auto parsed = std::from_chars(name.data(), end, number);
    const auto found = static_cast<ZOT::CHARSET>(number);
    if (parsed.ec != std::errc() || parsed.ptr != end || ZOT::CharsetName(found) == nullptr) return false;
    charset = found;
    return true;
}

}  // namespace

// No label is a number only.
bool CharsetFromName(const std::string& name, ZOT::CHARSET& charset) {
    return CharsetFromNumber(name, charset) || ZOT::CharsetFromLabel(name, charset);
}

}  // namespace QuillTool
