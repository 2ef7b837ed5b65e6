#pragma once

#include "node_store.h"

namespace ZOTParser {

// What decides about a page as a whole, gathered in one walk over its tree: where its text stands, and which
// elements say themselves that they are not shown, stand around the content, or are it. Text is weighed by
// its bytes in the source, which costs nothing; white space between elements counts nothing.
struct PageOutline {
    enum class Standing : unsigned int { kHidden, kClutter, kForm };  // a form that is short
    struct Mark {
        NodeIndex element;
        Standing standing;
    };

    unsigned int text = 0;          // all but what is skipped in the table reading
    unsigned int textInTables = 0;  // in table elements
    unsigned int shown = 0;         // outside the marked elements
    unsigned int linked = 0;        // of that, in links
    unsigned int prose = 0;         // of that, what reads like prose
    unsigned int locked = 0;        // hidden, or kept for browsers without scripts
    // The one element that is the main content by its own account; kNoNode when there is none, or several
    // that do not stand inside one another.
    NodeIndex main = kNoNode;
    unsigned int mainShown = 0;   // in it
    ZOT::FastVector<Mark> marks;  // no mark stands in one of another kind, memory permitting

    // The roles are those of the table reading.
    explicit PageOutline(const NodeStore& nodes) noexcept;
};

}  // namespace ZOTParser
