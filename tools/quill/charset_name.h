#pragma once

#include <string>
#include <zot/charset.h>

namespace QuillTool {

// The character set with this label of the WHATWG Encoding Standard or this code-page number, if there is
// one.
bool CharsetFromName(const std::string& name, ZOT::CHARSET& charset);

}  // namespace QuillTool
