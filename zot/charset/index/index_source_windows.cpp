#include <iterator>

#include <windows.h>

#include "index_source.h"

namespace ZOTCharset {

namespace {

constexpr UINT kGbk = 936;
constexpr UINT kGb18030 = 54936;  // GBK and more; not every system has it
constexpr UINT kCodePages[] = {950, kGbk, 949, 932, 20932};

const UINT& CodePageOf(SourceEncoding encoding) {
    const bool better = encoding == SourceEncoding::kGb18030 && IsValidCodePage(kGb18030);
    return better ? kGb18030 : kCodePages[static_cast<std::size_t>(encoding)];
}

// Only the index of GB18030 has characters for private use; the system gives them to whatever a code page
// leaves open.
bool IsOpenPlace(WCHAR unit, UINT codePage) {
    return unit >= 0xE000 && unit <= 0xF8FF && codePage != kGbk && codePage != kGb18030;
}

}  // namespace

IndexSource::IndexSource(SourceEncoding encoding) : descriptor_(const_cast<UINT*>(&CodePageOf(encoding))) {}

IndexSource::~IndexSource() = default;

char32_t IndexSource::Decode(const unsigned char* bytes, std::size_t count) {
    const UINT codePage = *static_cast<const UINT*>(descriptor_);
    // 20932 writes JIS X 0212 with two bytes: the second one loses its upper bit instead of the lead byte
    // 0x8F.
    unsigned char shorter[2] = {};
    if (count == 3) {
        shorter[0] = bytes[1];
        shorter[1] = bytes[2] & 0x7F;
        bytes = shorter;
        count = 2;
    }
    WCHAR units[4];
    const int made = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, reinterpret_cast<const char*>(bytes),
                                         static_cast<int>(count), units, static_cast<int>(std::size(units)));
    if (made == 1) return IsOpenPlace(units[0], codePage) ? 0 : units[0];
    if (made != 2 || !IS_SURROGATE_PAIR(units[0], units[1])) return 0;
    return 0x10000 + ((units[0] & 0x3FFu) << 10) + (units[1] & 0x3FFu);
}

}  // namespace ZOTCharset
