#pragma once

#include "attribute_reader.h"

namespace ZOTParser {

// The parts of a document type declaration, not decoded.
struct Doctype {
    Span name;
    Span publicId;
    Span systemId;
    bool hasName = false;
    bool hasPublicId = false;
    bool hasSystemId = false;
    bool forceQuirks = false;
};

enum class QuirksMode : unsigned char { kNone, kLimited, kFull };

// Reads what stands between "<!DOCTYPE" and the '>' (`closed`) or the end of the source (not `closed`).
// https://html.spec.whatwg.org/multipage/parsing.html#doctype-state and the states after it
Doctype ReadDoctype(Span content, bool closed) noexcept;

// https://html.spec.whatwg.org/multipage/parsing.html#the-initial-insertion-mode
QuirksMode QuirksOf(const Doctype& doctype) noexcept;

}  // namespace ZOTParser
