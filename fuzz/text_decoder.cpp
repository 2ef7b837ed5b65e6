// The text decoder: its fast paths give what the plain decoder gives, within the bounds that its header
// promises.

#include "text_decoder.h"

#include "fuzz_target.h"
#include "zot/plain_text_decoder.h"

using ZOTParser::TextKind;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const char* const first = reinterpret_cast<const char*>(data);
    const char* const last = first + size;
    for (TextKind kind : {TextKind::kData, TextKind::kReplaceNul, TextKind::kRaw}) {
        std::u16string text;
        ZOTParser::AppendDecodedText(first, last, kind, text);
        Require(text.size() <= size, "at most one unit per byte");
        Require(text == ZOTParser::PlainTextDecoder(first, last, kind).Decode(), "fast equals plain");
    }
    std::string value;
    ZOTParser::AppendDecodedAttribute(first, last, value);
    Require(value.size() <= 3 * size, "at most three bytes per byte");
    return 0;
}
