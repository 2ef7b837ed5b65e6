#pragma once

#include <string>
#include <quill/document_type.h>
#include <zot/charset.h>
#include <zot/memory.h>
#include <zot/ref_count.h>
#include <zot/ref_count_vector.h>
#include <zot/stream.h>

namespace QuillNS {

// A document in several parts that are judged together: a page and the documents of its frames, or several
// strings that belong together. Each part holds content of its own, or none, and an ordered list of child
// parts.
//
// A value with shared parts: copies share the stream and the child partitions. Streams and child partitions
// live as long as anybody shares them. One thread at a time; a partition must not be its own descendant, and
// whoever nests partitions bounds their depth (building and freeing recurse).
struct QUILL_API HtmlDocPartitions : ZOT::PoolObject {
    // Both kinds are parsed as HTML. A partition of any other kind has no content of its own.
    enum ContentType : int {
        HtmlContent = 0,
        TextContent = 1,  // what a browser calls a "Text Document"
    };
    using Children = ZOT::RefCountVector<HtmlDocPartitions, ZOT::RefCount<HtmlDocPartitions>>;

    // No stream, no character set, HtmlContent, no children but room for 16.
    HtmlDocPartitions();

    // Shares `stream`; no children but room for 16.
    HtmlDocPartitions(const ZOT::RefCount<ZOT::BinaryStream>& stream, ZOT::CHARSET charset,
                      ContentType contentType);

    // The copy has a list of its own, with as much room as `other` has children, and shares these.
    HtmlDocPartitions(const HtmlDocPartitions& other);

    // The children list keeps its room, or gets exactly the room that the children of `other` need. `other`
    // may be this partition or stand below it.
    HtmlDocPartitions& operator=(const HtmlDocPartitions& other);

    // Lets go of the children, then of the stream.
    ~HtmlDocPartitions();

    // The content. It is read from its read position on, so a stream gives its content once.
    ZOT::RefCount<ZOT::BinaryStream> stream;

    // Of the content. Content without a character set (kCharsetNone) is left out; the children are not.
    ZOT::CHARSET charset = ZOT::kCharsetNone;
    ContentType contentType = HtmlContent;

    // The child partitions in document order, none of them empty.
    Children children;
};

// As Beautify for a page (see beautify.h), with one ranking over all partitions. `documentText` receives the
// document text of `partitions` itself, not that of its children.

// Replaces `text`. True when it is not empty afterwards.
QUILL_API bool Beautify(const HtmlDocPartitions& partitions, std::u16string& text,
                        std::u16string* documentText, DocumentType* type);

// Appends the text to `out` at its write position. True when `out` holds bytes afterwards, also when it did
// before.
QUILL_API bool Beautify(const HtmlDocPartitions& partitions, ZOT::BinaryStreamBuf& out,
                        std::u16string* documentText, DocumentType* type);

}  // namespace QuillNS
