#include "chosen_spans.h"

#include <unordered_map>
#include <utility>

namespace QuillTool {

namespace {

// The text items that a strategy admits.
class Recorder : public QuillNS::QuillVisitor {
public:
    explicit Recorder(const Choice& choice) { ParseTree(choice.root, choice.strategy); }

    // Where they begin in the source. Texts of which nothing is left are not among them.
    const std::vector<unsigned int>& Positions() const { return positions_; }

private:
    void VisitTableInfix(const ZOT::SmartPtr<QuillNS::KTable>&) override {}
    void VisitTablePostfix(const ZOT::SmartPtr<QuillNS::KTable>&) override {}
    void VisitCellInfix(const ZOT::SmartPtr<QuillNS::KCell>&) override {}
    void VisitCellPostfix(const ZOT::SmartPtr<QuillNS::KCell>&) override {}
    void VisitCellText(const ZOT::SmartPtr<QuillNS::KCellItem>& item) override {
        if (item->SourceLength() != 0) positions_.push_back(item->SourcePosition());
    }

    std::vector<unsigned int> positions_;
};

struct TextNode {
    const Node* text;
    const Node* parent;
};

// No two texts of the page begin at one position.
std::unordered_map<unsigned int, TextNode> TextsByPosition(const ZOTParser::HtmlDocTree& tree) {
    std::unordered_map<unsigned int, TextNode> texts;
    WalkNodes(tree.Entries(), nullptr, [&](const Node& node, const Node* parent) {
        const bool is_of_page = node.Keyword() == ZOTParser::kKeywordText && node.SourceLength() != 0;
        if (is_of_page) texts[node.SourcePosition()] = {&node, parent};
    });
    return texts;
}

}  // namespace

// An item of the content tree is one text of the parser's tree. It knows where that begins and ends; the text
// itself knows what between the two are its characters.
std::vector<ChosenSpan> FindChosenSpans(const ZOTParser::HtmlDocTree& tree, const Choice& choice) {
    const auto texts = TextsByPosition(tree);
    std::vector<ChosenSpan> chosen;
    std::vector<ZOTParser::TextSpan> spans;
    unsigned int run = 0;
    const Recorder recorder(choice);
    for (const unsigned int position : recorder.Positions()) {
        const auto found = texts.find(position);
        if (found == texts.end()) continue;
        found->second.text->GetSpans(spans);
        ++run;
        for (const ZOTParser::TextSpan& span : spans) chosen.push_back({span, run, found->second.parent});
    }
    return chosen;
}

}  // namespace QuillTool
