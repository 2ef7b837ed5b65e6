#pragma once

#include <zot/charset.h>

struct IStream;

// Finds out the encoding of a page in an OLE stream, as ZOT::DetectEncoding does. Reads the stream from its
// start to its end, and leaves it there. Returns 0 and writes the character set; returns another number, and
// writes nothing, when the stream cannot be read, memory runs out or a pointer is null.
extern "C" int DetectCharset(IStream* stream, ZOT::CHARSET* charset);
