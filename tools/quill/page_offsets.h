#pragma once

#include <string_view>
#include <vector>
#include <zot/charset.h>
#include <zot/parser.h>

namespace QuillTool {

// Turns spans of the UTF-8 form of a page, with ends between characters, into spans of the page's own bytes.
void ToPageOffsets(std::string_view page, ZOT::CHARSET charset, std::vector<ZOTParser::TextSpan>& spans);

}  // namespace QuillTool
