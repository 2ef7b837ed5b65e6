#include <algorithm>
#include <cstddef>
#include <cstring>
#include <zot/text.h>

#include "standing_run.h"

namespace ZOT {

namespace {

// The characters that a run of white space leaves behind: line feeds, or a blank when there are none.
class WhiteSpaceRun {
public:
    explicit WhiteSpaceRun(bool keepLines) : keepLines_(keepLines) {}

    void Add(char16_t unit) {
        any_ = true;
        if (unit == u' ') return;
        const bool separator = unit == 0x2028 || unit == 0x2029;
        if (keepLines_ && (separator || unit == u'\n')) ++lines_;
        if (!keepLines_ && separator) lines_ = 1;
    }

    // Writes them at `to` and returns their end. They are never more than the units of the run.
    char16_t* Flush(char16_t* to) {
        if (!any_) return to;
        if (lines_ == 0) *to++ = u' ';
        to = std::fill_n(to, lines_, u'\n');
        any_ = false;
        lines_ = 0;
        return to;
    }

private:
    const bool keepLines_;
    bool any_ = false;
    std::size_t lines_ = 0;
};

// Cleans what stands in [at, end), and returns the end of what is left of it.
char16_t* CleanInPlace(char16_t* at, const char16_t* end, bool keepLines, bool cleanControls) {
    char16_t* to = at;
    WhiteSpaceRun run(keepLines);
    while (at != end) {
        std::size_t taken = 1;
        if (IsWhiteSpace(*at)) {
            run.Add(*at);
        } else if (!cleanControls || !ShowsNothing(*at)) {
            to = run.Flush(to);
            taken = std::max<std::size_t>(1, StandingRun(at, static_cast<std::size_t>(end - at)));
            if (to != at) std::memmove(to, at, taken * sizeof *at);
            to += taken;
        }
        at += taken;
    }
    return run.Flush(to);
}

}  // namespace

// Most texts stand as they are.
std::size_t BeautifyInPlace(char16_t* text, std::size_t size, bool keepLines, bool cleanControls) noexcept {
    const std::size_t standing = StandingRun(text, size);
    if (standing == size) return size;
    const char16_t* const end = CleanInPlace(text + standing, text + size, keepLines, cleanControls);
    return static_cast<std::size_t>(end - text);
}

void BeautifyString(const std::u16string& raw, std::u16string& clean, bool keepLines, bool cleanControls) {
    clean = raw;
    clean.resize(BeautifyInPlace(clean.data(), clean.size(), keepLines, cleanControls));
}

}  // namespace ZOT
