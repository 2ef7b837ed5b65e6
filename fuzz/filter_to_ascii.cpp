// The filter against a plain twin: a table of what each state of its window writes and how far it goes on.

#include "filter_to_ascii.h"

#include <string>
#include <zot/memory_buffer.h>

#include "fuzz_target.h"

namespace {

// By which of the three places are high: the first is 4, the second 2, the third 1.
struct Step {
    unsigned int written;  // the first so many places
    unsigned int advance;
};
constexpr Step kSteps[8] = {{1, 1}, {2, 2}, {0, 2}, {0, 2}, {0, 1}, {0, 3}, {0, 2}, {0, 3}};
constexpr const char* kLast[8] = {"012", "01", "2", "", "12", "", "", ""};  // the places written at the end

unsigned int HighPlaces(const std::string& bytes, std::size_t at) {
    unsigned int high = 0;
    for (std::size_t place = 0; place < 3; ++place) {
        high = high * 2 + (static_cast<unsigned char>(bytes[at + place]) > 0x7F);
    }
    return high;
}

std::string PlainFilter(std::string bytes) {
    const std::size_t size = bytes.size();
    bytes += "      ";  // stands where the source has no byte
    std::string kept;
    std::size_t at = 0;
    while (at + 3 < size) {
        const Step step = kSteps[HighPlaces(bytes, at)];
        kept.append(bytes, at, step.written);
        at += step.advance;
    }
    for (const char* place = kLast[HighPlaces(bytes, at)]; *place != '\0'; ++place) {
        kept += bytes[at + static_cast<std::size_t>(*place - '0')];
    }
    return kept;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ZOT::BinaryStream source(new ZOTFile::MemoryBuffer(data, static_cast<unsigned int>(size), 0), true);
    ZOT::BinaryStream target(new ZOTFile::MemoryBuffer(16), true);
    QuillNS::FilterToAscii(source, target);
    Require(source.Buffer()->vTellG() == 0, "the source stands at its start");
    std::string kept;
    target.Buffer()->Copy(kept, ZOT::kWholeStream);
    Require(kept == PlainFilter(std::string(reinterpret_cast<const char*>(data), size)),
            "what is kept is what the table says");
    return 0;
}
