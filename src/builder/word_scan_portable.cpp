#include "word_scan.h"

namespace QuillNS {

unsigned int CountSeparatorRuns(const char16_t* text, std::size_t size) noexcept {
    return CountSeparatorRunsPlain(text, size);
}

}  // namespace QuillNS
