#pragma once

namespace ZOT {

// Character sets by their Windows code-page numbers. Any number of an encoding of the WHATWG Encoding Standard
// may be cast to it; the named ones are those that the library itself uses.
enum CHARSET : int {
    kCharsetNone = -1,        // none, or not detected
    kCharsetUtf16Be = 1200,   // UTF-16, high byte first
    kCharsetUtf16Le = 1201,   // the bytes of a wide string: UTF-16, low byte first
    kCharsetWindows1252 = 1252,
    kCharsetLatin1 = 28591,
    kCharsetUtf8 = 65001,
};

}  // namespace ZOT
