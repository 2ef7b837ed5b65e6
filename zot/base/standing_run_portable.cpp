#include "standing_run.h"

namespace ZOT {

std::size_t StandingRun(const char16_t* text, std::size_t size) noexcept {
    return StandingRunPlain(text, size);
}

}  // namespace ZOT
