#pragma once

#include "text_block.h"

namespace ZOTCharset {

using NativeBlock = PlainBlock;

}  // namespace ZOTCharset
