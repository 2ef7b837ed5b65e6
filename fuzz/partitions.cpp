// A page in parts, from bytes to text: each line of the input is a partition, its first byte says how deep it
// hangs (0 to 7), its second which character set it is in.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>
#include <quill/partitions.h>
#include <zot/memory_buffer.h>

#include "fuzz_target.h"

namespace {

using QuillNS::HtmlDocPartitions;

constexpr ZOT::CHARSET kCharsets[] = {ZOT::kCharsetUtf8, ZOT::kCharsetWindows1252, ZOT::kCharsetUtf16Le,
                                      ZOT::kCharsetNone};

HtmlDocPartitions Partition(std::string_view line) {
    const std::string_view page = line.substr(2);
    auto* const buffer = new ZOTFile::MemoryBuffer(page.data(), static_cast<unsigned int>(page.size()), 0);
    return {ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(buffer, true)),
            kCharsets[static_cast<unsigned char>(line[1]) % 4],
            static_cast<HtmlDocPartitions::ContentType>(static_cast<unsigned char>(line[1]) / 4 % 3)};
}

HtmlDocPartitions Partitions(std::string_view input) {
    HtmlDocPartitions top;
    std::vector<HtmlDocPartitions*> path{&top};
    while (input.size() >= 2) {
        const std::string_view line = input.substr(0, input.find('\n', 2));
        input.remove_prefix(line.size());
        path.resize(std::min<std::size_t>(path.size(), 1 + static_cast<unsigned char>(line[0]) % 8));
        const ZOT::RefCount<HtmlDocPartitions> child(new HtmlDocPartitions(Partition(line)));
        path.back()->children.Append(child);
        path.push_back(child.Get());
    }
    return top;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::u16string text;
    std::u16string documentText = u"before";
    QuillNS::DocumentType type = QuillNS::ContentPage;
    const bool produced = Beautify(Partitions(input), text, &documentText, &type);
    Require(produced == !text.empty(), "the result tells whether there is text");
    Require(documentText == u"before", "a top partition without content has no document text");

    // Streams give their content once: each way gets its own.
    HtmlDocPartitions other;
    other = Partitions(input);
    ZOTFile::MemoryBuffer out(16);
    QuillNS::DocumentType otherType = QuillNS::ContentPage;
    Require(Beautify(other, out, nullptr, &otherType) == produced, "stream and string have text alike");
    std::u16string written;
    out.SeekG(0, ZOT::kFromBegin);
    out.Copy(written, ZOT::kWholeStream);
    Require(written == text && type == otherType, "stream and string hold the same");
    return 0;
}
