#pragma once

#include <zot/charset.h>

namespace ZOTCharset {

// The number that stands for the encoding here, where Windows has several for it.
constexpr ZOT::CHARSET EncodingNumber(ZOT::CHARSET charset) {
    switch (static_cast<int>(charset)) {
        case 20127: return ZOT::kCharsetWindows1252;  // US-ASCII
        case 28599: return ZOT::kCharsetWindows1254;  // ISO-8859-9
        case 28601: return ZOT::kCharsetWindows874;   // ISO-8859-11
        case 10017: return ZOT::kCharsetMacCyrillic;  // Ukrainian
        case 20936:                                   // GB2312
        case 51936: return ZOT::kCharsetGbk;          // EUC-CN
        case 20932: return ZOT::kCharsetEucJp;
        case 50221:
        case 50222: return ZOT::kCharsetIso2022Jp;
        case 51949: return ZOT::kCharsetEucKr;
        default: return charset;
    }
}

}  // namespace ZOTCharset
