#include "tree_builder.h"

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-inforeign

namespace ZOTParser {

using enum Tag;

namespace {

// The start tags that SVG and MathML content does not survive.
bool BreaksOut(Tag tag) noexcept {
    switch (tag) {
        case kB:
        case kBig:
        case kBlockquote:
        case kBody:
        case kBr:
        case kCenter:
        case kCode:
        case kDd:
        case kDiv:
        case kDl:
        case kDt:
        case kEm:
        case kEmbed:
        case kH1:
        case kH2:
        case kH3:
        case kH4:
        case kH5:
        case kH6:
        case kHead:
        case kHr:
        case kI:
        case kImg:
        case kLi:
        case kListing:
        case kMenu:
        case kMeta:
        case kNobr:
        case kOl:
        case kP:
        case kPre:
        case kRuby:
        case kS:
        case kSmall:
        case kSpan:
        case kStrong:
        case kStrike:
        case kSub:
        case kSup:
        case kTable:
        case kTt:
        case kU:
        case kUl:
        case kVar: return true;
        default: return false;
    }
}

}  // namespace

bool TreeBuilder::ForeignContent() noexcept {
    switch (token_.kind) {
        case TokenKind::kText:
            if (token_.textKind == TextKind::kData) token_.textKind = TextKind::kReplaceNul;
            InsertText(token_.content, token_.textKind);
            if (framesetOk_ && HasVisibleText()) framesetOk_ = false;
            return kDone;
        case TokenKind::kComment: InsertComment(); return kDone;
        case TokenKind::kStartTag: return ForeignStartTag();
        case TokenKind::kEndTag: return ForeignEndTag();
        default: return kDone;
    }
}

bool TreeBuilder::ForeignStartTag() noexcept {
    if (BreaksOut(token_.tag) || (token_.tag == kFont && HasFontAttribute())) return BreakOut();
    InsertForeignElement(AdjustedCurrent().ns);
    if (token_.selfClosing) PopCurrent();
    return kDone;
}

bool TreeBuilder::HasFontAttribute() const noexcept {
    AttributeReader reader(token_.content.last, token_.span.last);
    Attribute attribute;
    while (reader.Next(attribute)) {
        for (const std::string_view name : {"color", "face", "size"}) {
            if (IsIgnoringCase(attribute.name, name)) return true;
        }
    }
    return false;
}

bool TreeBuilder::BreakOut() noexcept {
    constexpr unsigned int kIntegrationPoints = kHtmlIntegrationPoint | kMathMlTextIntegrationPoint;
    while ((open_.Current().flags & kForeign) != 0 && (open_.Current().flags & kIntegrationPoints) == 0)
        PopCurrent();
    return ProcessByMode(mode_);
}

bool TreeBuilder::ForeignEndTag() noexcept {
    if (token_.tag == kBr || token_.tag == kP) return BreakOut();
    for (unsigned int index = open_.Size() - 1; index != 0; --index) {
        if ((open_[index].flags & kForeign) == 0) return ProcessByMode(mode_);
        if (SameName(open_[index])) {
            open_.PopTo(index);
            return kDone;
        }
    }
    return kDone;
}

}  // namespace ZOTParser
