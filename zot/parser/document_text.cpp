#include "document_text.h"

#include <zot/text.h>

namespace ZOTParser {
namespace {

// `preformatted`: the element stands in preformatted text, where elements within the line have that role too.
bool IsBlock(unsigned int keyword, bool preformatted) noexcept {
    const bool isWithinLine = preformatted && keyword == kKeywordPreformatted;
    return keyword != kKeywordInline && keyword != kKeywordAnchor && !isWithinLine;
}

// Neither white space nor invisible, at the price of one comparison.
bool IsPlain(char16_t unit) noexcept {
    return static_cast<char16_t>(unit - 0x21) < 0x7F - 0x21;
}

class DocumentTextWriter {
public:
    explicit DocumentTextWriter(std::u16string& text) : text_(text) { text_.clear(); }

    // Calls itself once per level of nesting, which the parser bounds.
    void WriteNodes(HtmlDocTree::ChildRange nodes, bool preformatted) {
        for (HtmlDocTree::ChildIterator node = nodes.begin(); node != nodes.end(); ++node) {
            const unsigned int keyword = node->Keyword();
            if (keyword == kKeywordText) {
                node->GetText(raw_);
                WriteText();
            } else if (keyword != kKeywordSkipped) {
                WriteElement(*node.operator->(), preformatted);
            }
        }
    }

private:
    enum class Gap { kNone, kBlank, kLine };  // what stands between the text so far and the next character

    void WriteElement(const HtmlDocTree::HtmlTreeNode& element, bool preformatted) {
        const bool block = IsBlock(element.Keyword(), preformatted);
        if (block) gap_ = Gap::kLine;
        WriteNodes(element.Children(), preformatted || element.Keyword() == kKeywordPreformatted);
        if (block) gap_ = Gap::kLine;
    }

    void WriteText() {
        const char16_t* at = raw_.data();
        const char16_t* const end = at + raw_.size();
        while (at != end) {
            const char16_t* const first = at;
            while (at != end && (Shows(*at) || (at != first && IsSingleBlank(at, end)))) ++at;
            if (at != first) WriteWords(first, at);
            for (; at != end && !Shows(*at); ++at) Widen(*at);
        }
    }

    static bool Shows(char16_t unit) noexcept {
        return IsPlain(unit) || (!ZOT::IsWhiteSpace(unit) && !ZOT::ShowsNothing(unit));
    }

    // A blank behind a character that shows and before another stays as it is.
    static bool IsSingleBlank(const char16_t* at, const char16_t* end) noexcept {
        return *at == u' ' && end - at > 1 && IsPlain(at[1]);
    }

    void WriteWords(const char16_t* first, const char16_t* last) {
        if (gap_ != Gap::kNone && !text_.empty()) text_ += gap_ == Gap::kLine ? u'\n' : u' ';
        gap_ = Gap::kNone;
        text_.append(first, last);
    }

    // Takes a unit that does not show into the gap.
    void Widen(char16_t unit) noexcept {
        if (unit == 0x2028 || unit == 0x2029) {
            gap_ = Gap::kLine;
        } else if (gap_ == Gap::kNone && ZOT::IsWhiteSpace(unit)) {
            gap_ = Gap::kBlank;
        }
    }

    std::u16string& text_;
    std::u16string raw_;
    Gap gap_ = Gap::kNone;
};

}  // namespace

void DocumentText(const HtmlDocTree& tree, std::u16string& text) {
    DocumentTextWriter(text).WriteNodes(tree.Entries(), false);
}

}  // namespace ZOTParser
