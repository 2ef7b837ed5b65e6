#pragma once

namespace QuillTool {

// What --help says before the options and after them.
extern const char* const kHelpUsage;
extern const char* const kHelpDescription;
extern const char* const kHelpFooter;

}  // namespace QuillTool
