#include <algorithm>
#include <cstddef>
#include <zot/text.h>

#include "standing_run.h"

namespace ZOT {

namespace {

// What a run of white space leaves behind.
class WhiteSpaceRun {
public:
    void Add(char16_t unit, bool keepLines) {
        any_ = true;
        const bool separator = unit == 0x2028 || unit == 0x2029;
        if (keepLines && (separator || unit == u'\n')) ++lines_;
        if (!keepLines && separator) lines_ = 1;
    }

    void Flush(std::u16string& clean) {
        if (!any_) return;
        if (lines_ == 0) clean.push_back(u' ');
        if (lines_ != 0) clean.append(lines_, u'\n');
        *this = WhiteSpaceRun();
    }

private:
    bool any_ = false;
    std::size_t lines_ = 0;
};

}  // namespace

void BeautifyString(const std::u16string& raw, std::u16string& clean, bool keepLines, bool cleanControls) {
    clean.clear();
    WhiteSpaceRun run;
    for (std::size_t at = 0; at < raw.size();) {
        const char16_t unit = raw[at];
        std::size_t taken = 1;
        if (IsWhiteSpace(unit)) {
            run.Add(unit, keepLines);
        } else if (!cleanControls || !ShowsNothing(unit)) {
            run.Flush(clean);
            taken = std::max<std::size_t>(1, StandingRun(raw.data() + at, raw.size() - at));
            clean.append(raw, at, taken);
        }
        at += taken;
    }
    run.Flush(clean);
}

}  // namespace ZOT
