#pragma once

#include <string>

#include <quill/cell.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

// Puts the text nodes of a page into cells. One object serves a whole page: it keeps the room that cleaning
// needs.
//
// Positions and lengths say where a text node stands in the source, in the parser's units. `inAnchor` counts
// the words as words in links too.
class CellText {
public:
    // A text node outside preformatted blocks: cleaned and joined to the text before it. One that shows
    // nothing but white space makes no item; it parts the text before it from what follows by a blank.
    void AddText(const std::u16string& raw, unsigned int position, unsigned int length,
                 ZOT::SmartPtr<KCell>& cell, bool inAnchor);

    // A text node that stands in a preformatted block itself: as the page has it, with CR LF as LF.
    void AddPreformattedText(const std::u16string& raw, unsigned int position, unsigned int length,
                             ZOT::SmartPtr<KCell>& cell, bool inAnchor);

    // Whether memory ran out; texts are then missing.
    bool OutOfMemory() const { return outOfMemory_; }

private:
    void AppendItem(unsigned int position, unsigned int length, KCell& cell, bool inAnchor);

    std::u16string clean_;  // the text at hand, as it goes into the cell
    bool outOfMemory_ = false;
};

// What the white space between two tags does: ends the cell's text with a blank, unless white space stands
// there, the text is empty, or the cell ends in a table.
void SeparateWords(ZOT::SmartPtr<KCell>& cell);

// Ends the cell's text with a line feed, unless two stand there, the text is empty, or the cell ends in a
// table.
void BreakLine(ZOT::SmartPtr<KCell>& cell);

}  // namespace QuillNS
