#include "gzip.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "page_limit.h"

namespace {

using QuillTool::Gunzip;
using QuillTool::kUncountedRoom;

constexpr std::size_t kMember = std::size_t{1} << 20;
constexpr std::size_t kMost = kUncountedRoom + kMember;

// As many bytes of 0, packed in members of kMember bytes and a rest.
std::string Packed(std::size_t size) {
    const auto member = [](std::size_t bytes) {
        std::string zeros(bytes, '\0');
        std::string packed(compressBound(static_cast<uLong>(bytes)) + 32, '\0');
        z_stream stream{};
        constexpr int kGzip = 16;
        deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kGzip + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
        stream.next_in = reinterpret_cast<Bytef*>(zeros.data());
        stream.avail_in = static_cast<uInt>(zeros.size());
        stream.next_out = reinterpret_cast<Bytef*>(packed.data());
        stream.avail_out = static_cast<uInt>(packed.size());
        EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
        packed.resize(stream.total_out);
        deflateEnd(&stream);
        return packed;
    };
    const std::string one = member(kMember);
    std::string all;
    for (std::size_t left = size / kMember; left != 0; --left) all += one;
    if (size % kMember != 0) all += member(size % kMember);
    return all;
}

// What is too large is known before there is room for it.
TEST(Gunzip, UnpacksNoMoreThanItMay) {
    struct Case {
        std::size_t size;
        bool fits;
    };
    for (const Case& c :
         {Case{kUncountedRoom, true}, Case{kMost, true}, Case{kMost + 1, false}, Case{4 * kMost, false}}) {
        std::string bytes;
        const std::string problem = Gunzip(Packed(c.size), bytes, kMost);
        EXPECT_EQ(problem, c.fits ? "" : QuillTool::kTooLarge) << c.size;
        if (c.fits) {
            EXPECT_EQ(bytes.size(), c.size);
        } else {
            EXPECT_LE(bytes.capacity(), kUncountedRoom);
        }
    }
}

}  // namespace
