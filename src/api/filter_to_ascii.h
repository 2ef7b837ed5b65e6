#pragma once

#include <zot/stream.h>

namespace QuillNS {

// For documents of which nobody knows the character set: appends the ASCII bytes of `source`, which is read
// from its start, to `target` and drops the others, together with ASCII bytes that may be second halves of
// theirs. Three bytes are judged at a time; where the source ends before a third one, blanks stand in and are
// written like its own. Both streams are rewound for reading.
void FilterToAscii(ZOT::BinaryStream& source, ZOT::BinaryStream& target);

}  // namespace QuillNS
