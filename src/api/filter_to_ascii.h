#pragma once

#include <zot/stream.h>

namespace QuillNS {

// For documents of which nobody knows the character set: writes the ASCII bytes of `source` into `target` and
// drops the others, together with ASCII bytes that may be second halves of theirs. A source shorter than
// three bytes is read as if blanks followed. Both streams are read and written from their start, and stand
// there again afterwards.
void FilterToAscii(ZOT::BinaryStream& source, ZOT::BinaryStream& target);

}  // namespace QuillNS
