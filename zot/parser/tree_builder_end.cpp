#include "tree_builder.h"

// Templates, framesets, and the insertion modes behind the body.

namespace ZOTParser {

using enum Tag;

void TreeBuilder::StartTemplate() noexcept {
    formatting_.PushMarker();
    InsertHtmlElement();
    framesetOk_ = false;
    mode_ = Mode::kInTemplate;
    PushTemplateMode();
}

void TreeBuilder::EndTemplate() noexcept {
    if (!open_.Has(kTemplate)) return;
    GenerateAllImpliedEndTagsThoroughly();
    CloseTemplate();
}

void TreeBuilder::CloseTemplate() noexcept {
    open_.PopUntil(kTemplate);
    formatting_.ClearToMarker();
    if (templateModes_.Size() != 0) templateModes_.Resize(templateModes_.Size() - 1);
    ResetInsertionMode();
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-intemplate
bool TreeBuilder::InTemplate() noexcept {
    switch (token_.kind) {
        case TokenKind::kStartTag: return InTemplateStartTag();
        case TokenKind::kEndTag: return token_.tag == kTemplate ? InHead() : kDone;
        default: return InBody();
    }
}

bool TreeBuilder::InTemplateStartTag() noexcept {
    switch (token_.tag) {
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
        case kCaption:
        case kColgroup:
        case kTbody:
        case kTfoot:
        case kThead: return SwitchTemplateMode(Mode::kInTable);
        case kCol: return SwitchTemplateMode(Mode::kInColumnGroup);
        case kTr: return SwitchTemplateMode(Mode::kInTableBody);
        case kTd:
        case kTh: return SwitchTemplateMode(Mode::kInRow);
        default: return SwitchTemplateMode(Mode::kInBody);
    }
}

bool TreeBuilder::SwitchTemplateMode(Mode mode) noexcept {
    if (templateModes_.Size() != 0) templateModes_[templateModes_.Size() - 1] = mode;
    mode_ = mode;
    return kReprocess;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-afterbody
bool TreeBuilder::AfterBody() noexcept {
    if (IsText() && LeadingSpace().last == token_.content.last) return InBody();
    if (IsComment()) {
        InsertComment(open_[0].node);
        return kDone;
    }
    if (IsDoctype()) return kDone;
    if (IsStart({kHtml})) return InBody();
    if (IsEnd({kHtml})) {
        if (!hasContext_) mode_ = Mode::kAfterAfterBody;
        return kDone;
    }
    mode_ = Mode::kInBody;
    return kReprocess;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-inframeset
bool TreeBuilder::InFrameset() noexcept {
    if (IsText()) {
        InsertOnlySpace();
        return kDone;
    }
    if (IsComment()) {
        InsertComment();
        return kDone;
    }
    if (IsStart({kHtml})) return InBody();
    if (IsStart({kFrameset})) {
        InsertHtmlElement();
    } else if (IsStart({kFrame})) {
        InsertVoid();
    } else if (IsStart({kNoframes})) {
        return InHead();
    } else if (IsEnd({kFrameset}) && open_.Size() > 1) {
        PopCurrent();
        if (!hasContext_ && !open_.Current().Is(kFrameset)) mode_ = Mode::kAfterFrameset;
    }
    return kDone;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-afterframeset
bool TreeBuilder::AfterFrameset() noexcept {
    if (IsText()) {
        InsertOnlySpace();
        return kDone;
    }
    if (IsComment()) {
        InsertComment();
        return kDone;
    }
    if (IsStart({kHtml})) return InBody();
    if (IsStart({kNoframes})) return InHead();
    if (IsEnd({kHtml})) mode_ = Mode::kAfterAfterFrameset;
    return kDone;
}

// https://html.spec.whatwg.org/multipage/parsing.html#the-after-after-body-insertion-mode
bool TreeBuilder::AfterAfterBody() noexcept {
    if (IsComment()) {
        InsertComment(kDocumentNode);
        return kDone;
    }
    if (IsDoctype() || IsStart({kHtml})) return InBody();
    if (IsText() && LeadingSpace().last == token_.content.last) return InBody();
    mode_ = Mode::kInBody;
    return kReprocess;
}

// https://html.spec.whatwg.org/multipage/parsing.html#the-after-after-frameset-insertion-mode
bool TreeBuilder::AfterAfterFrameset() noexcept {
    if (IsComment()) {
        InsertComment(kDocumentNode);
        return kDone;
    }
    if (IsStart({kHtml})) return InBody();
    if (IsText()) {
        ReconstructFormatting();
        InsertOnlySpace();
        return kDone;
    }
    return IsStart({kNoframes}) ? InHead() : kDone;
}

}  // namespace ZOTParser
