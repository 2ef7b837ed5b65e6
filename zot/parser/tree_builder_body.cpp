#include "tree_builder.h"

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-inbody

namespace ZOTParser {

using enum Tag;

bool TreeBuilder::InBody() noexcept {
    switch (token_.kind) {
        case TokenKind::kText: return InBodyText();
        case TokenKind::kStartTag: return InBodyStartTag();
        case TokenKind::kEndTag: return InBodyEndTag();
        case TokenKind::kComment: InsertComment(); return kDone;
        default: return kDone;
    }
}

bool TreeBuilder::InBodyText() noexcept {
    if (*token_.content.first == '\0' && token_.textKind == TextKind::kData && IsOnlyNul()) return kDone;
    ReconstructFormatting();
    InsertText(token_.content, token_.textKind);
    if (framesetOk_ && HasVisibleText()) framesetOk_ = false;
    return kDone;
}

bool TreeBuilder::InBodyStartTag() noexcept {
    switch (token_.tag) {
        case kHtml:
            if (!open_.Has(kTemplate)) MergeAttributes(0);
            return kDone;
        case kBase:
        case kBasefont:
        case kBgsound:
        case kLink:
        case kMeta:
        case kNoframes:
        case kScript:
        case kStyle:
        case kTemplate:
        case kTitle: return InHead();
        case kBody:
            if (open_.Size() > 1 && open_[1].Is(kBody) && !open_.Has(kTemplate)) {
                framesetOk_ = false;
                MergeAttributes(1);
            }
            return kDone;
        case kFrameset: StartFrameset(); return kDone;
        case kAddress:
        case kArticle:
        case kAside:
        case kBlockquote:
        case kCenter:
        case kDetails:
        case kDialog:
        case kDir:
        case kDiv:
        case kDl:
        case kFieldset:
        case kFigcaption:
        case kFigure:
        case kFooter:
        case kHeader:
        case kHgroup:
        case kMain:
        case kMenu:
        case kNav:
        case kOl:
        case kP:
        case kSearch:
        case kSection:
        case kSummary:
        case kUl:
            ClosePInButtonScope();
            InsertHtmlElement();
            return kDone;
        case kH1:
        case kH2:
        case kH3:
        case kH4:
        case kH5:
        case kH6:
            ClosePInButtonScope();
            if ((open_.Current().flags & kHeading) != 0) PopCurrent();
            InsertHtmlElement();
            return kDone;
        case kPre:
        case kListing:
            ClosePInButtonScope();
            InsertHtmlElement();
            skipNewline_ = true;
            framesetOk_ = false;
            return kDone;
        case kForm: StartForm(); return kDone;
        case kLi:
            CloseListItem(kLi, kLi);
            InsertHtmlElement();
            return kDone;
        case kDd:
        case kDt:
            CloseListItem(kDd, kDt);
            InsertHtmlElement();
            return kDone;
        case kPlaintext:
            ClosePInButtonScope();
            InsertHtmlElement();
            tokenizer_.SetState(TokenizerState::kPlaintext);
            return kDone;
        case kButton: StartButton(); return kDone;
        case kA: StartA(); return kDone;
        case kB:
        case kBig:
        case kCode:
        case kEm:
        case kFont:
        case kI:
        case kS:
        case kSmall:
        case kStrike:
        case kStrong:
        case kTt:
        case kU: StartFormatting(); return kDone;
        case kNobr: StartNobr(); return kDone;
        case kApplet:
        case kMarquee:
        case kObject:
            ReconstructFormatting();
            InsertHtmlElement();
            formatting_.PushMarker();
            framesetOk_ = false;
            return kDone;
        case kTable:
            if (quirks_ != QuirksMode::kFull) ClosePInButtonScope();
            InsertHtmlElement();
            framesetOk_ = false;
            mode_ = Mode::kInTable;
            return kDone;
        case kArea:
        case kBr:
        case kEmbed:
        case kImg:
        case kKeygen:
        case kWbr:
            ReconstructFormatting();
            InsertVoid();
            framesetOk_ = false;
            return kDone;
        case kInput: StartInput(); return kDone;
        case kParam:
        case kSource:
        case kTrack: InsertVoid(); return kDone;
        case kHr:
            ClosePInButtonScope();
            if (open_.InScope(kSelect)) GenerateImpliedEndTags();
            InsertVoid();
            framesetOk_ = false;
            return kDone;
        case kImage: token_.tag = kImg; return kReprocess;
        case kTextarea:
            StartRawText(TokenizerState::kRcdata);
            skipNewline_ = true;
            framesetOk_ = false;
            return kDone;
        case kXmp:
            ClosePInButtonScope();
            ReconstructFormatting();
            framesetOk_ = false;
            StartRawText(TokenizerState::kRawtext);
            return kDone;
        case kIframe:
            framesetOk_ = false;
            StartRawText(TokenizerState::kRawtext);
            return kDone;
        case kNoembed: StartRawText(TokenizerState::kRawtext); return kDone;
        case kSelect: StartSelect(); return kDone;
        case kSelectedcontent:
            selectedContent_ = true;
            ReconstructFormatting();
            InsertHtmlElement();
            return kDone;
        case kOptgroup:
        case kOption: StartOption(); return kDone;
        case kRb:
        case kRtc:
            if (open_.InScope(kRuby)) GenerateImpliedEndTags();
            InsertHtmlElement();
            return kDone;
        case kRp:
        case kRt:
            if (open_.InScope(kRuby)) GenerateImpliedEndTags(kRtc);
            InsertHtmlElement();
            return kDone;
        case kMath: StartForeign(Namespace::kMathMl); return kDone;
        case kSvg: StartForeign(Namespace::kSvg); return kDone;
        case kCaption:
        case kCol:
        case kColgroup:
        case kFrame:
        case kHead:
        case kTbody:
        case kTd:
        case kTfoot:
        case kTh:
        case kThead:
        case kTr: return kDone;
        default:
            ReconstructFormatting();
            InsertHtmlElement();
            return kDone;
    }
}

bool TreeBuilder::InBodyEndTag() noexcept {
    switch (token_.tag) {
        case kTemplate: return InHead();
        case kBody: EndBody(); return kDone;
        case kHtml: return EndBody();
        case kAddress:
        case kArticle:
        case kAside:
        case kBlockquote:
        case kButton:
        case kCenter:
        case kDetails:
        case kDialog:
        case kDir:
        case kDiv:
        case kDl:
        case kFieldset:
        case kFigcaption:
        case kFigure:
        case kFooter:
        case kHeader:
        case kHgroup:
        case kListing:
        case kMain:
        case kMenu:
        case kNav:
        case kOl:
        case kPre:
        case kSearch:
        case kSection:
        case kSelect:
        case kSummary:
        case kUl: EndBlock(); return kDone;
        case kForm: EndForm(); return kDone;
        case kP:
            if (EndsCurrent()) return kDone;
            if (!open_.InButtonScope(kP)) InsertHtmlElement(kP);
            ClosePElement();
            return kDone;
        case kLi:
            if (EndsCurrent() || !open_.InListItemScope(kLi)) return kDone;
            GenerateImpliedEndTags(kLi);
            open_.PopUntil(kLi);
            return kDone;
        case kDd:
        case kDt:
            if (!open_.InScope(token_.tag)) return kDone;
            GenerateImpliedEndTags(token_.tag);
            open_.PopUntil(token_.tag);
            return kDone;
        case kH1:
        case kH2:
        case kH3:
        case kH4:
        case kH5:
        case kH6:
            if (EndsCurrent() || !open_.HeadingInScope()) return kDone;
            GenerateImpliedEndTags();
            while ((open_.Current().flags & kHeading) == 0) PopCurrent();
            PopCurrent();
            return kDone;
        case kA:
        case kB:
        case kBig:
        case kCode:
        case kEm:
        case kFont:
        case kI:
        case kNobr:
        case kS:
        case kSmall:
        case kStrike:
        case kStrong:
        case kTt:
        case kU: RunAdoptionAgency(); return kDone;
        case kApplet:
        case kMarquee:
        case kObject:
            if (!open_.InScope(token_.tag)) return kDone;
            EndBlock();
            formatting_.ClearToMarker();
            return kDone;
        case kBr:
            ReconstructFormatting();
            InsertHtmlElement(kBr);
            PopCurrent();
            framesetOk_ = false;
            return kDone;
        default: AnyOtherEndTag(); return kDone;
    }
}

void TreeBuilder::AnyOtherEndTag() noexcept {
    if (EndsCurrent() || !open_.Has(token_.tag)) return;
    for (unsigned int index = open_.Size(); index-- > 1;) {
        const OpenElement& node = open_[index];
        if ((node.flags & kForeign) == 0 && SameName(node)) {
            GenerateImpliedEndTags(token_.tag);
            open_.PopTo(index);
            return;
        }
        if ((node.flags & kSpecial) != 0) return;
    }
}

void TreeBuilder::ClosePElement() noexcept {
    GenerateImpliedEndTags(kP);
    open_.PopUntil(kP);
}

void TreeBuilder::EndBlock() noexcept {
    if (EndsCurrent() || !open_.InScope(token_.tag)) return;
    GenerateImpliedEndTags();
    open_.PopUntil(token_.tag);
}

// `a` and `b` are the names of the items of one kind of list.
void TreeBuilder::CloseListItem(Tag a, Tag b) noexcept {
    framesetOk_ = false;
    if (open_.Has(a) || open_.Has(b)) {
        for (unsigned int index = open_.Size(); index-- > 0;) {
            const OpenElement node = open_[index];
            if (node.Is(a) || node.Is(b)) {
                GenerateImpliedEndTags(node.tag);
                open_.PopUntil(node.tag);
                break;
            }
            if ((node.flags & kSpecial) != 0 && !node.Is(kAddress) && !node.Is(kDiv) && !node.Is(kP)) break;
        }
    }
    ClosePInButtonScope();
}

// --- Start tags

void TreeBuilder::StartFormatting() noexcept {
    ReconstructFormatting();
    const NodeIndex node = InsertHtmlElement();
    formatting_.Push(node, token_.tag);
}

void TreeBuilder::StartA() noexcept {
    const unsigned int index = formatting_.FindBehindMarker(kA);
    if (index != ActiveFormatting::kNotFound) {
        const NodeIndex earlier = formatting_[index].node;
        RunAdoptionAgency();
        formatting_.Remove(earlier);
        const unsigned int open = open_.IndexOf(earlier);
        if (open != OpenElements::kNotFound) open_.RemoveAt(open);
    }
    StartFormatting();
}

void TreeBuilder::StartNobr() noexcept {
    ReconstructFormatting();
    if (open_.InScope(kNobr)) RunAdoptionAgency();
    StartFormatting();
}

void TreeBuilder::StartButton() noexcept {
    if (open_.InScope(kButton)) {
        GenerateImpliedEndTags();
        open_.PopUntil(kButton);
    }
    ReconstructFormatting();
    InsertHtmlElement();
    framesetOk_ = false;
}

void TreeBuilder::StartForm() noexcept {
    const bool inTemplate = open_.Has(kTemplate);
    if (formElement_ != kNoNode && !inTemplate) return;
    ClosePInButtonScope();
    const NodeIndex form = InsertHtmlElement();
    if (!inTemplate) formElement_ = form;
}

void TreeBuilder::StartFrameset() noexcept {
    if (open_.Size() < 2 || !open_[1].Is(kBody) || !framesetOk_) return;
    nodes_.Remove(open_[1].node);
    open_.PopTo(1);
    InsertHtmlElement();
    mode_ = Mode::kInFrameset;
}

void TreeBuilder::StartInput() noexcept {
    if (hasContext_ && context_.Is(kSelect)) return;
    if (open_.InScope(kSelect)) open_.PopUntil(kSelect);
    ReconstructFormatting();
    InsertVoid();
    if ((token_.attributes & kHasType) == 0 || !HasAttributeValue("type", {"hidden"})) framesetOk_ = false;
}

void TreeBuilder::StartSelect() noexcept {
    if (hasContext_ && context_.Is(kSelect)) return;
    if (open_.InScope(kSelect)) {
        open_.PopUntil(kSelect);
        return;
    }
    ReconstructFormatting();
    InsertHtmlElement();
    framesetOk_ = false;
}

void TreeBuilder::StartOption() noexcept {
    if (open_.InScope(kSelect)) {
        GenerateImpliedEndTags(token_.tag == kOption ? kOptgroup : kUnknown);
    } else if (open_.Current().Is(kOption)) {
        PopCurrent();
    }
    ReconstructFormatting();
    InsertHtmlElement();
}

void TreeBuilder::StartForeign(Namespace ns) noexcept {
    ReconstructFormatting();
    InsertForeignElement(ns);
    if (token_.selfClosing) PopCurrent();
}

// --- End tags

bool TreeBuilder::EndBody() noexcept {
    if (!open_.InScope(kBody)) return kDone;
    mode_ = Mode::kAfterBody;
    return kReprocess;
}

void TreeBuilder::EndForm() noexcept {
    if (open_.Has(kTemplate)) {
        EndBlock();
        return;
    }
    const NodeIndex form = formElement_;
    formElement_ = kNoNode;
    if (form == kNoNode) return;
    const unsigned int index = open_.IndexOf(form);
    if (index == OpenElements::kNotFound || ScopeEndsAbove(index)) return;
    GenerateImpliedEndTags();
    const unsigned int left = open_.IndexOf(form);
    if (left != OpenElements::kNotFound) open_.RemoveAt(left);
}

bool TreeBuilder::ScopeEndsAbove(unsigned int index) const noexcept {
    for (unsigned int above = index + 1; above < open_.Size(); ++above) {
        if ((open_[above].flags & kScope) != 0) return true;
    }
    return false;
}

// --- The adoption agency algorithm
// https://html.spec.whatwg.org/multipage/parsing.html#adoption-agency-algorithm

void TreeBuilder::RunAdoptionAgency() noexcept {
    const Tag subject = token_.tag;
    if (open_.Current().Is(subject)) {
        // Nearly always what was opened last is closed first.
        const NodeIndex current = open_.Current().node;
        if (!formatting_.Empty() && formatting_.Last().node == current) {
            formatting_.RemoveLast();
            open_.PopInactive();
            return;
        }
        if (formatting_.IndexOf(current) == ActiveFormatting::kNotFound) {
            PopCurrent();
            return;
        }
    }
    for (int outer = 0; outer < 8; ++outer) {
        if (!AdoptOnce(subject)) return;
    }
}

// One turn of the outer loop; whether there is to be another one.
bool TreeBuilder::AdoptOnce(Tag subject) noexcept {
    const unsigned int entry = formatting_.FindBehindMarker(subject);
    if (entry == ActiveFormatting::kNotFound) {
        AnyOtherEndTag();
        return false;
    }
    const NodeIndex formattingNode = formatting_[entry].node;
    const unsigned int formattingIndex = open_.IndexOf(formattingNode);
    if (formattingIndex == OpenElements::kNotFound) {
        formatting_.RemoveAt(entry);
        return false;
    }
    if (ScopeEndsAbove(formattingIndex)) return false;
    unsigned int furthestIndex = formattingIndex + 1;
    while (furthestIndex < open_.Size() && (open_[furthestIndex].flags & kSpecial) == 0) ++furthestIndex;
    if (furthestIndex == open_.Size() || !TakeReopening()) {
        open_.PopTo(formattingIndex);
        formatting_.RemoveAt(entry);
        return false;
    }
    const OpenElement commonAncestor = open_[formattingIndex - 1];
    const NodeIndex furthest = open_[furthestIndex].node;
    unsigned int bookmark = entry;
    const NodeIndex last = ReparentBetween(formattingNode, furthestIndex, bookmark);

    nodes_.Remove(last);
    InsertAt(AppropriatePlace(commonAncestor), last);
    const NodeIndex clone = CloneElement(formattingNode);
    nodes_.MoveChildren(furthest, clone);
    nodes_.Append(furthest, clone);
    adopted_ = true;

    const unsigned int old = formatting_.IndexOf(formattingNode);
    const std::uint32_t attributes = formatting_[old].attributes;
    if (old < bookmark) --bookmark;
    formatting_.RemoveAt(old);
    formatting_.Insert(bookmark, {.node = clone, .tag = subject, .attributes = attributes});
    open_.RemoveAt(formattingIndex);
    open_.Insert(open_.IndexOf(furthest) + 1,
                 OpenElement{clone, subject, Namespace::kHtml, FlagsOf(subject, Namespace::kHtml)});
    return true;
}

// The inner loop: from the furthest block down the stack to the formatting element, what is active formatting
// is copied and takes in what lay below it; what is not leaves the stack. Returns the outermost node of the
// chain.
NodeIndex TreeBuilder::ReparentBetween(NodeIndex formattingNode, unsigned int furthestIndex,
                                       unsigned int& bookmark) noexcept {
    const NodeIndex furthest = open_[furthestIndex].node;
    NodeIndex last = furthest;
    unsigned int index = furthestIndex;
    for (int inner = 1;; ++inner) {
        --index;
        OpenElement node = open_[index];
        if (node.node == formattingNode) return last;
        unsigned int entry = formatting_.IndexOf(node.node);
        if (inner > 3 && entry != ActiveFormatting::kNotFound) {
            formatting_.RemoveAt(entry);
            if (entry < bookmark) --bookmark;
            entry = ActiveFormatting::kNotFound;
        }
        if (entry == ActiveFormatting::kNotFound) {
            open_.RemoveAt(index);
            continue;
        }
        node.node = CloneElement(node.node);
        formatting_[entry].node = node.node;
        open_.Replace(index, node);
        if (last == furthest) bookmark = entry + 1;
        nodes_.Remove(last);
        nodes_.Append(node.node, last);
        last = node.node;
    }
}

}  // namespace ZOTParser
