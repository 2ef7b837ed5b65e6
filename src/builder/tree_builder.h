#pragma once

#include <string>

#include <quill/partitions.h>
#include <quill/table.h>
#include <zot/parser.h>
#include <zot/smart_ptr.h>
#include <zot/stream.h>

namespace QuillNS {

// From a page to its content tree.
//
// The root table has one column and three rows: row 0 stays empty, row 1 holds the body cell (everything of
// the page outside tables, and one item for each of its tables), row 2 the partition cell. A page without
// content leaves the root as it is.
//
// `text` may be null. Otherwise it receives the document text that the parser gives, if that is not empty.
// Nothing is reported; when memory runs out the tree is let go and `root` is null.

// The root of a content tree, null when memory runs out.
ZOT::SmartPtr<KTable> MakeRoot();

// Builds the page whose bytes the stream holds from its read position on, in the character set `charset`,
// into `root`.
void BuildTree(ZOT::BinaryStreamBuf& stream, ZOT::CHARSET charset, ZOT::SmartPtr<KTable>& root,
               std::u16string* text);

// Builds a page that has been parsed.
void BuildTree(ZOTParser::HtmlDocTree& tree, ZOT::SmartPtr<KTable>& root, std::u16string* text);

// The root of a partition, with the roots of its child partitions as table items of its partition cell. These
// stay roots: without a parent, of level 0. Only the document text of `partition` itself reaches `text`.
ZOT::SmartPtr<KTable> BuildPartitionTree(const HtmlDocPartitions& partition, std::u16string* text);

}  // namespace QuillNS
