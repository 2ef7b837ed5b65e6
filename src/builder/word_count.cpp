#include <quill/word_count.h>
#include "word_scan.h"

namespace QuillNS {

unsigned int CountWords(std::u16string_view text) noexcept {
    if (text.empty()) return 0;
    const unsigned int separatorRuns = CountSeparatorRuns(text.data(), text.size());
    return separatorRuns + (IsWordSeparator(text.back()) ? 0 : 1);
}

}  // namespace QuillNS
