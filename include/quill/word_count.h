#pragma once

#include <string_view>

#include <zot/export.h>

namespace QuillNS {

// The number of words in `text`, by the one definition of a word that the library has.
//
// Words are divided by the fourteen characters of "\n\t .,!()%$?*#|" and by nothing else: a carriage return,
// a no-break space, a hyphen or a quotation mark belongs to the word it stands in. The count is the number of
// maximal runs of word characters, plus 1 when the text begins with a separator; a text of separators alone
// counts 1, an empty one 0. Words behind a U+0000 are not seen, except that a text whose last character is a
// word character ends in a word.
//
// Any thread may call it. It allocates nothing.
QUILL_API unsigned int CountWords(std::u16string_view text) noexcept;

}  // namespace QuillNS
