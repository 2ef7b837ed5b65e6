#include "whole_lines.h"

namespace QuillTool {

std::string WholeLines(std::string text) {
    text.resize(text.find_last_not_of('\n') + 1);
    return text.empty() ? text : text + '\n';
}

}  // namespace QuillTool
