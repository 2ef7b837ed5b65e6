#include <bit>
#include <iterator>

#include <iconv.h>

#include "index_source.h"

namespace ZOTCharset {

namespace {

// The first name that iconv knows is taken.
constexpr const char* kNames[][2] = {
    {"BIG5-HKSCS", "BIG5"}, {"GB18030", "GBK"},  {"CP949", "EUC-KR"},
    {"CP932", "SHIFT_JIS"}, {"EUC-JP", "EUCJP"},
};

const iconv_t kClosed = reinterpret_cast<iconv_t>(-1);

}  // namespace

IndexSource::IndexSource(SourceEncoding encoding) : descriptor_(kClosed) {
    const char* const to = std::endian::native == std::endian::little ? "UTF-32LE" : "UTF-32BE";
    for (const char* name : kNames[static_cast<std::size_t>(encoding)]) {
        if (descriptor_ == kClosed) descriptor_ = iconv_open(to, name);
    }
}

IndexSource::~IndexSource() {
    if (descriptor_ != kClosed) iconv_close(descriptor_);
}

char32_t IndexSource::Decode(const unsigned char* bytes, std::size_t count) {
    if (descriptor_ == kClosed) return 0;
    char32_t points[4] = {};
    // iconv takes its input as char*, but only reads it.
    char* source = const_cast<char*>(reinterpret_cast<const char*>(bytes));
    char* target = reinterpret_cast<char*>(points);
    std::size_t room = sizeof points;
    iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
    const bool failed = iconv(descriptor_, &source, &count, &target, &room) == static_cast<std::size_t>(-1) ||
                        iconv(descriptor_, nullptr, nullptr, &target, &room) == static_cast<std::size_t>(-1);
    return failed || count != 0 || room != sizeof points - sizeof points[0] ? 0 : points[0];
}

}  // namespace ZOTCharset
