#include "tree_builder.h"

#include "selected_content.h"

namespace ZOTParser {

using enum Tag;

TreeBuilder::TreeBuilder(NodeStore& nodes, Options options) noexcept
    : nodes_(nodes), options_(options), formatting_(nodes) {}

void TreeBuilder::Run(unsigned int first) noexcept {
    tokenizer_.Open(nodes_.Source() + first, nodes_.SourceEnd());
    while (tokenizer_.Next(token_)) {
        if (!IsPlainBody() || InBody() == kReprocess) Process();
        if (nodes_.Failed()) return;
        tokenizer_.AllowCdata(open_.ForeignCount() != 0 && (AdjustedCurrent().flags & kForeign) != 0);
    }
    ProcessEnd();
    if (selectedContent_ && CopySelectedOptions(nodes_)) adopted_ = true;
    if (adopted_ && !nodes_.Failed()) nodes_.LimitDepth(kMaxDepth);
}

void TreeBuilder::SetContext(Tag tag, Namespace ns) noexcept {
    hasContext_ = true;
    context_ = OpenElement{kNoNode, tag, ns, FlagsOf(tag, ns)};
    AddIntegrationPoint(context_, false);
    if (ns == Namespace::kHtml) tokenizer_.SetState(StateOfContext(tag));
    const OpenElement root = NewElement(kHtml, Namespace::kHtml, false);
    nodes_.Append(kDocumentNode, root.node);
    open_.Push(root);
    if (context_.Is(kTemplate)) PushTemplateMode();
    if (context_.Is(kForm)) formElement_ = kSpareNode;
    ResetInsertionMode();
}

TokenizerState TreeBuilder::StateOfContext(Tag tag) noexcept {
    switch (tag) {
        case kTitle:
        case kTextarea: return TokenizerState::kRcdata;
        case kStyle:
        case kXmp:
        case kIframe:
        case kNoembed:
        case kNoframes: return TokenizerState::kRawtext;
        case kScript: return TokenizerState::kScriptData;
        case kPlaintext: return TokenizerState::kPlaintext;
        default: return TokenizerState::kData;
    }
}

void TreeBuilder::Process() noexcept {
    if (skipNewline_ && SkipNewline()) return;
    if (overflow_ != 0 && PayOverflow()) return;
    while (IsForeignToken() ? ForeignContent() : ProcessByMode(mode_)) {
    }
}

bool TreeBuilder::ProcessByMode(Mode mode) noexcept {
    switch (mode) {
        case Mode::kInitial: return Initial();
        case Mode::kBeforeHtml: return BeforeHtml();
        case Mode::kBeforeHead: return BeforeHead();
        case Mode::kInHead: return InHead();
        case Mode::kInHeadNoscript: return InHeadNoscript();
        case Mode::kAfterHead: return AfterHead();
        case Mode::kInBody: return InBody();
        case Mode::kText: return TextMode();
        case Mode::kInTable: return InTable();
        case Mode::kInCaption: return InCaption();
        case Mode::kInColumnGroup: return InColumnGroup();
        case Mode::kInTableBody: return InTableBody();
        case Mode::kInRow: return InRow();
        case Mode::kInCell: return InCell();
        case Mode::kInTemplate: return InTemplate();
        case Mode::kAfterBody: return AfterBody();
        case Mode::kInFrameset: return InFrameset();
        case Mode::kAfterFrameset: return AfterFrameset();
        case Mode::kAfterAfterBody: return AfterAfterBody();
        case Mode::kAfterAfterFrameset: return AfterAfterFrameset();
    }
    return kDone;
}

// The end-of-file token, in every mode.
void TreeBuilder::ProcessEnd() noexcept {
    while (!nodes_.Failed()) {
        switch (mode_) {
            case Mode::kInitial: mode_ = Mode::kBeforeHtml; break;
            case Mode::kBeforeHtml: InsertRoot(NewElement(kHtml, Namespace::kHtml, false)); break;
            case Mode::kBeforeHead: InsertHead(InsertHtmlElement(kHead)); break;
            case Mode::kInHead: CloseHead(); break;
            case Mode::kInHeadNoscript: CloseHeadNoscript(); break;
            case Mode::kAfterHead: InsertBody(); break;
            case Mode::kText:
                PopCurrent();
                mode_ = originalMode_;
                break;
            case Mode::kAfterBody:
            case Mode::kInFrameset:
            case Mode::kAfterFrameset:
            case Mode::kAfterAfterBody:
            case Mode::kAfterAfterFrameset: return;
            default:
                if (templateModes_.Size() == 0 || !open_.Has(kTemplate)) return;
                CloseTemplate();
        }
    }
}

// https://html.spec.whatwg.org/multipage/parsing.html#tree-construction-dispatcher
bool TreeBuilder::IsForeignToken() const noexcept {
    if (open_.Empty()) return false;
    const OpenElement node = AdjustedCurrent();
    if ((node.flags & kForeign) == 0) return false;
    const bool start = token_.kind == TokenKind::kStartTag;
    if ((node.flags & kMathMlTextIntegrationPoint) != 0) {
        if (IsText() || (start && token_.tag != kMglyph && token_.tag != kMalignmark)) return false;
    }
    if (node.tag == kAnnotationXml && node.ns == Namespace::kMathMl && start && token_.tag == kSvg)
        return false;
    return (node.flags & kHtmlIntegrationPoint) == 0 || !(start || IsText());
}

OpenElement TreeBuilder::AdjustedCurrent() const noexcept {
    return hasContext_ && open_.Size() == 1 ? context_ : open_.Current();
}

bool TreeBuilder::IsTag(TokenKind kind, std::initializer_list<Tag> tags) const noexcept {
    if (token_.kind != kind) return false;
    for (const Tag tag : tags) {
        if (token_.tag == tag) return true;
    }
    return false;
}

bool TreeBuilder::SameName(const OpenElement& element) const noexcept {
    if (token_.tag != element.tag) return false;
    return token_.tag != kUnknown || nodes_.IsNamed(element.node, token_.content);
}

bool TreeBuilder::HasAttributeValue(std::string_view name,
                                    std::initializer_list<std::string_view> values) const noexcept {
    AttributeReader reader(token_.content.last, token_.span.last);
    Attribute attribute;
    while (reader.Next(attribute)) {
        if (!IsIgnoringCase(attribute.name, name)) continue;
        for (const std::string_view value : values) {
            if (IsIgnoringCase(attribute.value, value)) return true;
        }
        return false;
    }
    return false;
}

// --- Bounds

// The element at the limit is closed, so that the new one becomes its sibling. Its end tag is still to come
// and must not close another element.
void TreeBuilder::CloseForRoom() noexcept {
    const OpenElement element = open_.Current();
    ++overflow_;
    ++overflowOf_[static_cast<unsigned int>(element.tag)];
    open_.Pop();
}

// Whether the token is the end tag of an element that was closed at the limit.
bool TreeBuilder::PayOverflow() noexcept {
    if (open_.Size() + 1 < kMaxDepth) {
        overflow_ = 0;
        for (auto& count : overflowOf_) count = 0;
        return false;
    }
    if (token_.kind != TokenKind::kEndTag) return false;
    auto& owed = overflowOf_[static_cast<unsigned int>(token_.tag)];
    if (owed == 0) return false;
    --owed;
    --overflow_;
    return true;
}

// Formatting that is reopened in paragraph after paragraph costs nodes that the page does not pay for with
// bytes.
bool TreeBuilder::TakeReopening() noexcept {
    constexpr unsigned int kFree = 4096;
    constexpr unsigned int kBytesEach = 8;
    if (reopened_ >= kFree + nodes_.SourceSize() / kBytesEach) return false;
    ++reopened_;
    return true;
}

// --- Helpers of the standard

// https://html.spec.whatwg.org/multipage/parsing.html#generate-implied-end-tags
void TreeBuilder::GenerateImpliedEndTags(Tag except) noexcept {
    while ((open_.Current().flags & kImpliedEnd) != 0 && !open_.Current().Is(except)) PopCurrent();
}

void TreeBuilder::GenerateAllImpliedEndTagsThoroughly() noexcept {
    while ((open_.Current().flags & (kImpliedEnd | kImpliedEndThoroughly)) != 0) PopCurrent();
}

// https://html.spec.whatwg.org/multipage/parsing.html#reconstruct-the-active-formatting-elements
void TreeBuilder::ReconstructClosed() noexcept {
    if (formatting_.Last().node == kNoNode) return;
    unsigned int from = formatting_.Size();
    while (from > 0 && formatting_[from - 1].node != kNoNode &&
           open_.IndexOf(formatting_[from - 1].node) == OpenElements::kNotFound) {
        --from;
    }
    ReopenFormatting(from);
    open_.ClearFormattingClosed();
}

void TreeBuilder::ReopenFormatting(unsigned int from) noexcept {
    for (unsigned int index = from; index < formatting_.Size(); ++index) {
        if (!TakeReopening()) {
            while (formatting_.Size() > index) formatting_.RemoveAt(formatting_.Size() - 1);
            return;
        }
        const Tag tag = formatting_[index].tag;
        MakeRoom();
        const OpenElement element{CloneElement(formatting_[index].node), tag, Namespace::kHtml,
                                  FlagsOf(tag, Namespace::kHtml)};
        formatting_[index].node = InsertAndPush(element);
    }
}

// https://html.spec.whatwg.org/multipage/parsing.html#reset-the-insertion-mode-appropriately
void TreeBuilder::ResetInsertionMode() noexcept {
    for (unsigned int index = open_.Size(); index-- > 0;) {
        const bool last = index == 0;
        const OpenElement node = last && hasContext_ ? context_ : open_[index];
        if ((node.flags & kForeign) == 0) {
            switch (node.tag) {
                case kTd:
                case kTh:
                    if (last) break;
                    mode_ = Mode::kInCell;
                    return;
                case kTr: mode_ = Mode::kInRow; return;
                case kTbody:
                case kThead:
                case kTfoot: mode_ = Mode::kInTableBody; return;
                case kCaption: mode_ = Mode::kInCaption; return;
                case kColgroup: mode_ = Mode::kInColumnGroup; return;
                case kTable: mode_ = Mode::kInTable; return;
                case kTemplate: mode_ = TemplateMode(); return;
                case kHead:
                    if (last) break;
                    mode_ = Mode::kInHead;
                    return;
                case kBody: mode_ = Mode::kInBody; return;
                case kFrameset: mode_ = Mode::kInFrameset; return;
                case kHtml: mode_ = headElement_ == kNoNode ? Mode::kBeforeHead : Mode::kAfterHead; return;
                default: break;
            }
        }
    }
    mode_ = Mode::kInBody;
}

void TreeBuilder::MergeAttributes(unsigned int openIndex) noexcept {
    if (token_.content.last + 1 == token_.span.last) return;  // it has none
    nodes_.MergeAttributes(open_[openIndex].node, nodes_.PositionOf(token_.span.first));
}

}  // namespace ZOTParser
