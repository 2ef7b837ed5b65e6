#pragma once

#include <span>
#include <string_view>

#include <quill/cell.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

// Puts the text nodes of a page into cells. One object serves a whole page. The texts it is given are cleaned
// where they stand.
//
// Positions and lengths say where a text node stands in the source, in the parser's units. `inAnchor` counts
// the words as words in links too.
class CellText {
public:
    // A text node outside preformatted blocks: cleaned and joined to the text before it. One that shows
    // nothing but white space makes no item; it parts the text before it from what follows by a blank.
    void AddText(std::span<char16_t> raw, unsigned int position, unsigned int length,
                 ZOT::SmartPtr<KCell>& cell, bool inAnchor);

    // A text node that stands in a preformatted block itself: as the page has it, with CR LF as LF.
    void AddPreformattedText(std::span<char16_t> raw, unsigned int position, unsigned int length,
                             ZOT::SmartPtr<KCell>& cell, bool inAnchor);

    // Whether memory ran out; texts are then missing.
    bool OutOfMemory() const { return outOfMemory_; }

private:
    void AppendItem(std::u16string_view clean, unsigned int position, unsigned int length, KCell& cell,
                    bool inAnchor);

    bool outOfMemory_ = false;
};

// What the white space between two tags does: ends the cell's text with a blank, unless white space stands
// there, the text is empty, or the cell ends in a table.
void SeparateWords(ZOT::SmartPtr<KCell>& cell);

// Ends the cell's text with a line feed, unless two stand there, the text is empty, or the cell ends in a
// table.
void BreakLine(ZOT::SmartPtr<KCell>& cell);

}  // namespace QuillNS
