#pragma once

// Sixteen bytes at a time: ByteVector is the fastest that the target has. All have the operations that
// byte_vector_plain.h describes.
#if defined(__SSE2__)
#include "byte_vector_sse2.h"
#else
#include "byte_vector_plain.h"
#endif

namespace ZOTParser {

#if defined(__SSE2__)
using ByteVector = ByteVectorSse2;
#else
using ByteVector = ByteVectorPlain;
#endif

}  // namespace ZOTParser
