#pragma once

#include <cstddef>

#include <zot/charset.h>

// Finds out the encoding of a page from its bytes. Callable from any thread; needs no state.
namespace ZOT {

// The encoding of the `count` bytes of a page, never kCharsetNone. In this order:
//   1. a byte-order mark (UTF-8, UTF-16)
//   2. what the page declares, see DeclaredEncoding
//   3. UTF-16 without a mark, by its pattern of zero bytes
//   4. what the page declares further behind, where browsers find it too
//   5. UTF-8, when the whole page is valid UTF-8 and not all ASCII
//   6. what the language of the text suggests: a guess of the platform's detection library
//   7. Windows-1252
// Against a declaration, a page is taken for UTF-8 when it is so from end to end and has more characters that
// are not ASCII than chance explains. A guess at another encoding of the Latin script than Windows-1252 needs
// a text with many of its letters. The conversions keep a byte-order mark as text: skip it.
QUILL_API CHARSET DetectEncoding(const unsigned char* bytes, std::size_t count);

// The encoding that a page declares in its first 1024 bytes, in a `meta` element or an XML declaration, by
// https://html.spec.whatwg.org/multipage/parsing.html#prescan-a-byte-stream-to-determine-its-encoding;
// kCharsetNone when it declares none, or one that does not exist. A page that can be read this way is not in
// UTF-16, so a declared UTF-16 means UTF-8, and x-user-defined means Windows-1252.
QUILL_API CHARSET DeclaredEncoding(const unsigned char* bytes, std::size_t count);

}  // namespace ZOT
