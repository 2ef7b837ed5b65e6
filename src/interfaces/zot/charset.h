#pragma once

#include <string_view>

#include <zot/export.h>

namespace ZOT {

// Character sets by their Windows code-page numbers. Every encoding of the WHATWG Encoding Standard has its
// number here; encodings that Windows has no number for got one of ours. A few other numbers name the same
// encodings (28599 and 1254, 20932 and 51932, ...); CharsetName knows them too.
enum CHARSET : int {
    kCharsetNone = -1,  // none, or not detected

    kCharsetUtf8 = 65001,
    kCharsetUtf16Be = 1200,  // UTF-16, high byte first
    kCharsetUtf16Le = 1201,  // the bytes of a wide string: UTF-16, low byte first
    kCharsetLatin1 =
        28591,  // ISO-8859-1 as ISO has it: 0x80 to 0x9F are controls; its labels mean Windows-1252

    kCharsetIbm866 = 866,
    kCharsetWindows874 = 874,
    kCharsetWindows1250 = 1250,
    kCharsetWindows1251 = 1251,
    kCharsetWindows1252 = 1252,
    kCharsetWindows1253 = 1253,
    kCharsetWindows1254 = 1254,
    kCharsetWindows1255 = 1255,
    kCharsetWindows1256 = 1256,
    kCharsetWindows1257 = 1257,
    kCharsetWindows1258 = 1258,
    kCharsetMacintosh = 10000,
    kCharsetMacCyrillic = 10007,
    kCharsetKoi8R = 20866,
    kCharsetKoi8U = 21866,
    kCharsetIso8859_2 = 28592,
    kCharsetIso8859_3 = 28593,
    kCharsetIso8859_4 = 28594,
    kCharsetIso8859_5 = 28595,
    kCharsetIso8859_6 = 28596,
    kCharsetIso8859_7 = 28597,
    kCharsetIso8859_8 = 28598,
    kCharsetIso8859_8I = 38598,
    kCharsetIso8859_10 = 28600,
    kCharsetIso8859_13 = 28603,
    kCharsetIso8859_14 = 28604,  // ours
    kCharsetIso8859_15 = 28605,
    kCharsetIso8859_16 = 28606,  // ours

    kCharsetShiftJis = 932,
    kCharsetGbk = 936,
    kCharsetEucKr = 949,
    kCharsetBig5 = 950,
    kCharsetIso2022Jp = 50220,
    kCharsetEucJp = 51932,
    kCharsetGb18030 = 54936,

    kCharsetUserDefined = 100000,  // ours: x-user-defined
    kCharsetReplacement = 100001,  // ours: a page in it is one U+FFFD
};

// The encoding that a label of the WHATWG Encoding Standard names, white space around it and case set aside.
// False leaves `charset` as it was.
QUILL_API bool CharsetFromLabel(std::string_view label, CHARSET& charset);

// The name that the Encoding Standard gives the encoding ("windows-1252"; "ISO-8859-1" for kCharsetLatin1,
// which it lacks). Null for numbers that are no encoding of ours.
QUILL_API const char* CharsetName(CHARSET charset);

}  // namespace ZOT
