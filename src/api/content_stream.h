#pragma once

#include <zot/ref_count.h>
#include <zot/stream.h>

namespace QuillNS {

// An empty stream in memory for the content of a partition. Empty holder when memory runs out.
ZOT::RefCount<ZOT::BinaryStream> NewContentStream();

}  // namespace QuillNS
