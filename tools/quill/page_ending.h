#pragma once

#include <string>
#include <string_view>

namespace QuillTool {

// Whether a file of this name counts as a page when a folder is read: it ends in .html, .htm or .xhtml, or in
// one of these with .gz behind it. Case does not matter.
bool IsPageName(std::string_view name);

// The name without such an ending; the whole name when it has none, or nothing else.
std::string_view WithoutPageEnding(std::string_view name);

// ASCII letters in lower case.
std::string Lowered(std::string_view text);

}  // namespace QuillTool
