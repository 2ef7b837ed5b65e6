#pragma once

#include <string>
#include <string_view>
#include <vector>
#include <zot/memory_buffer.h>
#include <zot/parser.h>

// A page and its tree. The page sits in a buffer of exactly its size.
class ParsedPage {
public:
    using Node = ZOTParser::HtmlDocTree::HtmlTreeNode;
    using Children = ZOTParser::HtmlDocTree::ChildRange;

    using Reading = ZOTParser::HtmlKeywordTable::PrtType;

    explicit ParsedPage(std::string_view page, ZOT::CHARSET charset = ZOT::kCharsetUtf8,
                        Reading reading = ZOTParser::HtmlKeywordTable::kTableReading)
        : page_(page.begin(), page.end()), tree_(charset) {
        ZOTFile::MemoryBuffer stream(page_.data(), static_cast<unsigned int>(page_.size()), 0);
        Parse(stream, reading);
    }

    ParsedPage(std::string_view page, Reading reading) : ParsedPage(page, ZOT::kCharsetUtf8, reading) {}

    ParsedPage(ZOT::BinaryStreamBuf& stream, ZOT::CHARSET charset) : tree_(charset) {
        Parse(stream, ZOTParser::HtmlKeywordTable::kTableReading);
    }

    const ZOTParser::HtmlDocTree& Tree() const { return tree_; }
    bool Parsed() const { return parsed_; }

    // Children of the body, or of the frameset that stands in its place.
    Children Body() const {
        Children body(nullptr);
        for (auto html = tree_.Entries().begin(); html != tree_.Entries().end(); ++html) {
            for (auto child = html->Children().begin(); child != html->Children().end(); ++child) {
                body = child->Children();
            }
        }
        return body;
    }

    std::u16string DocumentText() const {
        std::u16string text = u"old";
        tree_.GetText(text, ZOTParser::HtmlKeywordTable::kDocumentText);
        return text;
    }

private:
    void Parse(ZOT::BinaryStreamBuf& stream, Reading reading) {
        ZOTParser::HtmlKeywordTable keywords(reading);
        ZOTParser::HtmlDocParser parser(stream, keywords, tree_);
        parsed_ = parser.Parse();
    }

    std::vector<char> page_;
    ZOTParser::HtmlDocTree tree_;
    bool parsed_ = false;
};

// Calls visit(node, depth) for every node below `nodes` in document order; those of `nodes` have the depth 1.
template <class Visit>
void VisitNodes(ParsedPage::Children nodes, const Visit& visit, unsigned depth = 1) {
    for (auto node = nodes.begin(); node != nodes.end(); ++node) {
        visit(*node.operator->(), depth);
        VisitNodes(node->Children(), visit, depth + 1);
    }
}
