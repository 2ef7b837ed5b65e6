#include "choice.h"

namespace QuillTool {

namespace {

constexpr unsigned int kBufferSize = 4096;

// Lends the strategy that an extractor has made up its mind on.
class Chooser : public QuillNS::QuillTextExtractor {
public:
    using QuillTextExtractor::QuillTextExtractor;
    using QuillTextExtractor::Strategy;
};

}  // namespace

bool Choose(ZOTParser::HtmlDocTree& tree, Choice& choice) {
    choice.root = QuillNS::GetDocumentTree(tree);
    if (!choice.root) return false;
    ZOTFile::MemoryBuffer text(kBufferSize);
    QuillNS::ExtractText(choice.root, &text, &choice.type);
    text.SeekG(0, ZOT::kFromBegin);
    choice.text.clear();
    text.Copy(choice.text, ZOT::kWholeStream);
    choice.strategy = Chooser(choice.root, choice.type == QuillNS::LinkPage, nullptr).Strategy();
    return static_cast<bool>(choice.strategy);
}

}  // namespace QuillTool
