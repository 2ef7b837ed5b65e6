// Sniffing: always an encoding that there is, and none that the page cannot be in.

#include <zot/detect.h>

#include "fuzz_target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Require(ZOT::CharsetName(ZOT::DetectEncoding(data, size)) != nullptr, "an encoding is found");
    const ZOT::CHARSET declared = ZOT::DeclaredEncoding(data, size);
    Require(declared == ZOT::kCharsetNone || ZOT::CharsetName(declared) != nullptr,
            "an encoding is declared");
    Require(declared != ZOT::kCharsetUserDefined, "x-user-defined means Windows-1252");
    return 0;
}
