#pragma once

#include <string>
#include <string_view>
#include <vector>
#include <zot/text.h>

// What of a text a reader sees, without the white space that lays it out.
inline std::u16string VisibleUnits(std::u16string_view text) {
    std::u16string visible;
    for (const char16_t unit : text) {
        if (!ZOT::IsWhiteSpace(unit) && !ZOT::ShowsNothing(unit)) visible += unit;
    }
    return visible;
}

// The runs of visible units between white space.
inline std::vector<std::u16string> VisibleWords(std::u16string_view text) {
    std::vector<std::u16string> words(1);
    for (const char16_t unit : text) {
        if (ZOT::IsWhiteSpace(unit)) {
            if (!words.back().empty()) words.emplace_back();
        } else if (!ZOT::ShowsNothing(unit)) {
            words.back() += unit;
        }
    }
    if (words.back().empty()) words.pop_back();
    return words;
}

// Whether `part` is what is left of `whole` when some of its elements are taken out.
template <class Sequence>
bool HoldsInOrder(const Sequence& whole, const Sequence& part) {
    auto next = part.begin();
    for (const auto& element : whole) {
        if (next != part.end() && element == *next) ++next;
    }
    return next == part.end();
}
