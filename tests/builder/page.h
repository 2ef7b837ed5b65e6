#pragma once

#include <string>
#include <string_view>
#include <quill/table.h>
#include <zot/parser.h>

namespace QuillNS {

// A parsed page, from UTF-8.
class Page {
public:
    explicit Page(std::string_view html);

    ZOTParser::HtmlDocTree& Tree() { return tree_; }

    // The first table of the page in document order. The page has one.
    ZOTParser::HtmlDocTree::ChildRange FirstTable() const;

private:
    ZOTParser::HtmlDocTree tree_;
};

// The content tree of a page.
ZOT::SmartPtr<KTable> ContentOf(std::string_view html);

// The body cell of a page; null when it has none.
ZOT::SmartPtr<KCell> BodyOf(std::string_view html);

// A cell as text, in ASCII:
//
//   'one/' {('two/') . ; ('three' 'four//')}
//
//   'one/'   a text item, line feeds as slashes
//   {;}      a nested table, row by row
//   ()       a cell of it, with its items
//   .        a slot without a cell
std::string Dump(const KCell& cell);

// The body cell of a page as text.
std::string DumpBody(std::string_view html);

}  // namespace QuillNS
