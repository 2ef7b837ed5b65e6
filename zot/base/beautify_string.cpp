#include <algorithm>
#include <cstddef>
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

    void Flush(std::u16string& clean) {
        if (!any_) return;
        if (lines_ == 0) clean.push_back(u' ');
        if (lines_ != 0) clean.append(lines_, u'\n');
        any_ = false;
        lines_ = 0;
    }

private:
    const bool keepLines_;
    bool any_ = false;
    std::size_t lines_ = 0;
};

// Cleans what stands at and behind `at`.
void AppendClean(const std::u16string& raw, std::size_t at, std::u16string& clean, bool keepLines,
                 bool cleanControls) {
    WhiteSpaceRun run(keepLines);
    while (at < raw.size()) {
        const char16_t unit = raw[at];
        std::size_t taken = 1;
        if (IsWhiteSpace(unit)) {
            run.Add(unit);
        } else if (!cleanControls || !ShowsNothing(unit)) {
            run.Flush(clean);
            taken = std::max<std::size_t>(1, StandingRun(raw.data() + at, raw.size() - at));
            clean.append(raw, at, taken);
        }
        at += taken;
    }
    run.Flush(clean);
}

}  // namespace

// Most texts stand as they are.
void BeautifyString(const std::u16string& raw, std::u16string& clean, bool keepLines, bool cleanControls) {
    const std::size_t standing = StandingRun(raw.data(), raw.size());
    clean.assign(raw, 0, standing);
    if (standing != raw.size()) AppendClean(raw, standing, clean, keepLines, cleanControls);
}

}  // namespace ZOT
