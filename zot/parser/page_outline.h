#pragma once

#include "node_store.h"
#include "self_description.h"
#include "table_roles.h"

namespace ZOTParser {

// Bytes of text in the source, without the white space between elements.
struct TextBytes {
    unsigned int all = 0;
    unsigned int linked = 0;    // in links
    unsigned int inTables = 0;  // in tables, with no layout block between table and text
    unsigned int prose = 0;     // in runs of text that read like prose
    unsigned int leftOut = 0;   // in blocks that are not content by their own account

    unsigned int Shown() const noexcept { return all - leftOut; }

    TextBytes& operator+=(const TextBytes& other) noexcept {
        all += other.all;
        linked += other.linked;
        inTables += other.inTables;
        prose += other.prose;
        leftOut += other.leftOut;
        return *this;
    }
    friend TextBytes operator-(const TextBytes& a, const TextBytes& b) noexcept {
        return {a.all - b.all, a.linked - b.linked, a.inTables - b.inTables, a.prose - b.prose,
                a.leftOut - b.leftOut};
    }
};

// An element that stands on lines of its own, or says what it is; a part of a table too. What a browser never
// shows (scripts, forms' fields, ...) is none, but for what is kept for browsers without scripts.
struct Block {
    NodeIndex element;
    unsigned int around;  // the block that it stands in; 0: the page
    unsigned int end;     // behind the last block that stands in it
    Description description;
    bool isData;            // a table whose rows read as lines
    bool isOfTable;         // what lays out its text is a table, not a layout block
    unsigned int ownProse;  // bytes of prose in it that no frame in it holds
    TextBytes bytes;        // of the text in it
};

// Whether elements of that tag are there to lay out a page.
constexpr bool IsLayoutBlock(Tag tag) noexcept {
    switch (tag) {
        case Tag::kDiv:
        case Tag::kSection:
        case Tag::kArticle:
        case Tag::kMain:
        case Tag::kHeader:
        case Tag::kFooter:
        case Tag::kNav:
        case Tag::kAside: return true;
        default: return false;
    }
}

// What decides about a page, gathered in the one walk that gives the elements their roles: its blocks in
// document order, and what it says about itself. The blocks inside block `i` are those from `i + 1` to
// before `blocks[i].end`.
struct PageOutline {
    ZOT::FastVector<Block> blocks;  // the first one is the page as a whole
    // Links that are a card, a heading or a teaser.
    ZOT::FastVector<NodeIndex> cards;
    // The one block that is the main content by its own account; 0 when there is none, or several that do not
    // stand inside one another.
    unsigned int main = 0;
    // The frame (a layout block, a table cell, or the page) with most prose of its own: where an article has
    // its paragraphs. 0 also when there is no prose.
    unsigned int story = 0;
    TextBytes leftOut;         // in blocks that are not content by their own account
    TextBytes withoutScripts;  // of that, kept for browsers without scripts
    unsigned int locked = 0;   // of that, the same or hidden: all bytes

    // Of the page as a whole.
    const TextBytes& All() const noexcept { return blocks[0].bytes; }
    TextBytes Shown() const noexcept { return All() - leftOut; }

    // Gives every element its role in the table reading. False when memory runs out.
    bool Draw(NodeStore& nodes, const TableRoles& roles) noexcept;
};

}  // namespace ZOTParser
