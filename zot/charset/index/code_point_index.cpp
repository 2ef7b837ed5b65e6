#include "code_point_index.h"

#include <algorithm>
#include <array>
#include <mutex>

#include "index_mends.h"
#include "index_source.h"

namespace ZOTCharset {

namespace {

// The bytes of a pointer, and how many they are.
struct PointerBytes {
    unsigned char bytes[3];
    std::size_t count;
};

PointerBytes TwoBytes(std::size_t lead, std::size_t trail) {
    return {{static_cast<unsigned char>(lead), static_cast<unsigned char>(trail), 0}, 2};
}

PointerBytes Big5Bytes(std::size_t pointer) {
    const std::size_t trail = pointer % kBig5Trails;
    return TwoBytes(pointer / kBig5Trails + 0x81, trail + (trail < 0x3F ? 0x40 : 0x62));
}

PointerBytes Gb18030Bytes(std::size_t pointer) {
    const std::size_t trail = pointer % kGbTrails;
    return TwoBytes(pointer / kGbTrails + 0x81, trail + (trail < 0x3F ? 0x40 : 0x41));
}

PointerBytes EucKrBytes(std::size_t pointer) {
    return TwoBytes(pointer / kEucKrTrails + 0x81, pointer % kEucKrTrails + 0x41);
}

PointerBytes ShiftJisBytes(std::size_t pointer) {
    const std::size_t lead = pointer / kShiftJisTrails;
    const std::size_t trail = pointer % kShiftJisTrails;
    return TwoBytes(lead + (lead < 0x1F ? 0x81 : 0xC1), trail + (trail < 0x3F ? 0x40 : 0x41));
}

PointerBytes Jis0212Bytes(std::size_t pointer) {
    return {{0x8F, static_cast<unsigned char>(pointer / kJisCells + 0xA1),
             static_cast<unsigned char>(pointer % kJisCells + 0xA1)},
            3};
}

// One index, filled when it is first asked for.
template <std::size_t kSize>
class LazyIndex {
public:
    template <class Fill>
    IndexView View(Fill fill) {
        std::call_once(filled_, [&] { fill(points_); });
        return {points_.data(), kSize};
    }

private:
    std::once_flag filled_;
    std::array<char32_t, kSize> points_{};
};

template <class Points>
void FillFrom(SourceEncoding encoding, PointerBytes (*bytesOf)(std::size_t), Points& points) {
    IndexSource source(encoding);
    for (std::size_t pointer = 0; pointer != points.size(); ++pointer) {
        const PointerBytes bytes = bytesOf(pointer);
        points[pointer] = source.Decode(bytes.bytes, bytes.count);
    }
}

template <class Points>
void Mend(const IndexMend* first, const IndexMend* last, Points& points) {
    for (; first != last; ++first) points[first->pointer] = first->point;
}

constinit LazyIndex<126 * kBig5Trails> big5;
constinit LazyIndex<126 * kGbTrails> gb18030;
constinit LazyIndex<126 * kEucKrTrails> eucKr;
constinit LazyIndex<60 * kShiftJisTrails> jis0208;
constinit LazyIndex<kJisCells * kJisCells> jis0212;
constinit LazyIndex<39420> ranges;

// https://encoding.spec.whatwg.org/#index-gb18030-ranges lists, in order, what the two-byte index of an older
// edition left out. Where the present index differs from that one, the ranges did not follow.
bool IsInRanges(char32_t point, const std::array<bool, 0x10000>& inIndex) {
    if (point >= 0xD800 && point <= 0xDFFF) return false;
    const bool moved =
        point == 0x1E3F || (point >= 0x9FB4 && point <= 0x9FBB) || (point >= 0xFE10 && point <= 0xFE19);
    if (moved) return true;
    constexpr char32_t kFormer[] = {0xE5E5, 0xE7C7, 0xE78D, 0xE78E, 0xE78F, 0xE790, 0xE791,
                                    0xE792, 0xE793, 0xE794, 0xE795, 0xE796, 0xE81E, 0xE826,
                                    0xE82B, 0xE82C, 0xE832, 0xE843, 0xE854, 0xE864};
    return !inIndex[point] && std::ranges::find(kFormer, point) == std::end(kFormer);
}

template <class Points>
void FillRanges(Points& points) {
    static std::array<bool, 0x10000> inIndex;  // on no stack, and needed once
    const IndexView index = Gb18030Index();
    for (std::size_t pointer = 0; pointer != index.size; ++pointer) {
        if (index.points[pointer] < inIndex.size()) inIndex[index.points[pointer]] = true;
    }
    std::size_t pointer = 0;
    for (char32_t point = 0x80; point != inIndex.size() && pointer != points.size(); ++point) {
        if (IsInRanges(point, inIndex)) points[pointer++] = point == 0x1E3F ? 0xE7C7 : point;
    }
}

}  // namespace

IndexView Big5Index() {
    return big5.View([](auto& points) {
        FillFrom(SourceEncoding::kBig5, Big5Bytes, points);
        Mend(std::begin(kBig5Mends), std::end(kBig5Mends), points);
    });
}

IndexView Gb18030Index() {
    return gb18030.View([](auto& points) {
        FillFrom(SourceEncoding::kGb18030, Gb18030Bytes, points);
        Mend(std::begin(kGb18030Mends), std::end(kGb18030Mends), points);
    });
}

IndexView EucKrIndex() {
    return eucKr.View([](auto& points) { FillFrom(SourceEncoding::kEucKr, EucKrBytes, points); });
}

IndexView Jis0208Index() {
    return jis0208.View([](auto& points) { FillFrom(SourceEncoding::kShiftJis, ShiftJisBytes, points); });
}

IndexView Jis0212Index() {
    return jis0212.View([](auto& points) {
        FillFrom(SourceEncoding::kEucJp, Jis0212Bytes, points);
        Mend(std::begin(kJis0212Mends), std::end(kJis0212Mends), points);
    });
}

IndexView Gb18030Ranges() {
    return ranges.View([](auto& points) { FillRanges(points); });
}

}  // namespace ZOTCharset
