#pragma once

#include <cstddef>

namespace ZOTCharset {

// The encodings from which the indexes are taken.
enum class SourceEncoding { kBig5, kGb18030, kEucKr, kShiftJis, kEucJp };

// The platform's decoder of one of them, opened for as long as the object lives.
class IndexSource {
public:
    explicit IndexSource(SourceEncoding encoding);
    IndexSource(const IndexSource&) = delete;  // it holds a descriptor of the system
    IndexSource& operator=(const IndexSource&) = delete;
    ~IndexSource();

    // The one code point that these bytes are, or 0.
    char32_t Decode(const unsigned char* bytes, std::size_t count);

private:
    void* descriptor_;
};

}  // namespace ZOTCharset
