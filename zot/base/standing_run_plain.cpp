#include "standing_run.h"

namespace ZOT {

std::size_t StandingRunPlain(const char16_t* text, std::size_t size) noexcept {
    const auto shows = [](char16_t unit) { return !IsWhiteSpace(unit) && !ShowsNothing(unit); };
    std::size_t run = 0;
    while (run < size && (shows(text[run]) || (text[run] == u' ' && run + 1 < size && shows(text[run + 1]))))
        ++run;
    return run;
}

}  // namespace ZOT
