#pragma once

#include <string>
#include <quill/document_type.h>
#include <quill/table.h>
#include <zot/charset.h>
#include <zot/parser.h>
#include <zot/smart_ptr.h>
#include <zot/stream.h>

namespace QuillNS {

// From an HTML page to its readable main content, as UTF-16 text; navigation, link lists and other clutter
// stay out.
//
// A page is given as bytes, read from the stream's read position to its end in the character set `charset`
// (kCharsetNone: the encoding is found out from the bytes), or as a tree that ZOTParser::HtmlDocParser has
// filled.
//
//   documentText   may be null. Receives all the text that a reader of the page could see, when there is
//                  any. It is never emptied: a page without text leaves it as it was.
//   type           may be null. Receives LinkPage for a page that is mostly links, and for one without words;
//                  ContentPage for any other.
//
// A malformed page is no error: what browsers make of it is read. No call keeps state; any number of threads
// may call, each with streams, trees and strings of its own. When memory runs out there is no text. The
// library throws nothing itself; what the standard's own strings and sets throw for want of memory
// (std::bad_alloc, std::length_error) passes through.

// Replaces `text`. True when it is not empty afterwards.
QUILL_API bool Beautify(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset, std::u16string& text,
                        std::u16string* documentText, DocumentType* type);
QUILL_API bool Beautify(ZOTParser::HtmlDocTree& tree, std::u16string& text, std::u16string* documentText,
                        DocumentType* type);

// Appends the text to `out` at its write position, two bytes for each unit, low byte first. True when there
// is any; otherwise `out` is untouched.
QUILL_API bool Beautify(ZOTParser::HtmlDocTree& tree, ZOT::BinaryStreamBuf& out, std::u16string* documentText,
                        DocumentType* type);

// The same, written straight into `out`, which must not be `page`. True when `out` holds bytes afterwards:
// bytes that it held before count, so here the result tells nothing about the page unless `out` was empty.
QUILL_API bool Beautify(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset, ZOT::BinaryStreamBuf& out,
                        std::u16string* documentText, DocumentType* type);

// The content tree of the page, which a host may have parsed itself, unranked: a table of one column and
// three rows whose row 1 holds the body cell, with everything of the page outside tables and, as items, its
// tables. Rows 0 and 2 are null, and so is row 1 for a page without content. Null when memory runs out.
QUILL_API ZOT::SmartPtr<KTable> GetDocumentTree(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset);
QUILL_API ZOT::SmartPtr<KTable> GetDocumentTree(ZOTParser::HtmlDocTree& tree);

}  // namespace QuillNS
