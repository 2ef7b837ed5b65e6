#pragma once

#include <cstddef>

#include <zot/conv.h>

#include "span.h"

// The decoders of the Encoding Standard for Chinese, Japanese and Korean, and the one of "replacement".
namespace ZOTCharset {

void DecodeBig5(ConversionState& state, Bytes& source, UnitRoom& target, bool last);
void DecodeGb18030(ConversionState& state, Bytes& source, UnitRoom& target, bool last);  // GBK too
void DecodeEucKr(ConversionState& state, Bytes& source, UnitRoom& target, bool last);
void DecodeEucJp(ConversionState& state, Bytes& source, UnitRoom& target, bool last);
void DecodeShiftJis(ConversionState& state, Bytes& source, UnitRoom& target, bool last);
void DecodeIso2022Jp(ConversionState& state, Bytes& source, UnitRoom& target, bool last);
void DecodeReplacement(ConversionState& state, Bytes& source, UnitRoom& target, bool last);

}  // namespace ZOTCharset
