#include <cstddef>
#include <zot/text.h>

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
    for (const char16_t unit : raw) {
        if (IsWhiteSpace(unit)) {
            run.Add(unit, keepLines);
        } else if (!cleanControls || !ShowsNothing(unit)) {
            run.Flush(clean);
            clean.push_back(unit);
        }
    }
    run.Flush(clean);
}

}  // namespace ZOT
