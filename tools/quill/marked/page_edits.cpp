#include "page_edits.h"

#include <algorithm>

namespace QuillTool {

std::string PageEdits::Apply(std::string_view page) {
    std::stable_sort(edits_.begin(), edits_.end(),
                     [](const Edit& a, const Edit& b) { return a.position < b.position; });
    std::string result;
    std::size_t done = 0;
    for (const Edit& edit : edits_) {
        result += page.substr(done, edit.position - done);
        result += edit.text;
        done = edit.position + edit.length;
    }
    return result += page.substr(done);
}

}  // namespace QuillTool
