#pragma once

// Character references of the WHATWG HTML standard: `&amp;`, `&nbsp`, `&#x2019;`.
// https://html.spec.whatwg.org/multipage/parsing.html#character-reference-state

namespace ZOTParser {

// What a reference stands for and how long it is.
struct CharacterReference {
    char32_t first = 0;   // a Unicode scalar value
    char32_t second = 0;  // the second of the few references that stand for two, else 0
    unsigned length = 0;  // bytes of the source, '&' included; 0: this '&' is no reference
};

// Reads the reference at `at`, which points at '&', and looks at nothing from `end` on. Of several names the
// longest counts. `inAttribute` leaves names without a semicolon alone where '=' or an alphanumeric follows,
// so that the query strings of URLs survive. Any thread may call it.
CharacterReference MatchCharacterReference(const char* at, const char* end, bool inAttribute) noexcept;

}  // namespace ZOTParser
