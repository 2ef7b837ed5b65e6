#include "tree_builder.h"

// Insertion modes from "initial" to "after head", and "text".

namespace ZOTParser {

using enum Tag;

// https://html.spec.whatwg.org/multipage/parsing.html#the-initial-insertion-mode
bool TreeBuilder::Initial() noexcept {
    if (IsText() && !SkipLeadingSpace()) return kDone;
    if (IsComment()) {
        InsertComment(kDocumentNode);
        return kDone;
    }
    mode_ = Mode::kBeforeHtml;
    if (IsDoctype()) {
        quirks_ = QuirksOf(ReadDoctype(token_.content, token_.content.last != token_.span.last));
        if (options_.keepAll) {
            nodes_.Append(kDocumentNode,
                          nodes_.NewOther(NodeType::kDoctype, nodes_.PositionOf(token_.content.first),
                                          static_cast<unsigned int>(token_.content.Size())));
        }
        return kDone;
    }
    quirks_ = QuirksMode::kFull;
    return kReprocess;
}

// https://html.spec.whatwg.org/multipage/parsing.html#the-before-html-insertion-mode
bool TreeBuilder::BeforeHtml() noexcept {
    if (IsDoctype()) return kDone;
    if (IsComment()) {
        InsertComment(kDocumentNode);
        return kDone;
    }
    if (IsText() && !SkipLeadingSpace()) return kDone;
    if (IsStart({kHtml})) {
        InsertRoot(NewElement(kHtml, Namespace::kHtml, true));
        return kDone;
    }
    if (token_.kind == TokenKind::kEndTag && !IsEnd({kHead, kBody, kHtml, kBr})) return kDone;
    InsertRoot(NewElement(kHtml, Namespace::kHtml, false));
    return kReprocess;
}

void TreeBuilder::InsertRoot(const OpenElement& html) noexcept {
    nodes_.Append(kDocumentNode, html.node);
    open_.Push(html);
    mode_ = Mode::kBeforeHead;
}

// https://html.spec.whatwg.org/multipage/parsing.html#the-before-head-insertion-mode
bool TreeBuilder::BeforeHead() noexcept {
    if (IsText() && !SkipLeadingSpace()) return kDone;
    if (IsComment()) {
        InsertComment();
        return kDone;
    }
    if (IsDoctype()) return kDone;
    if (IsStart({kHtml})) return InBody();
    if (IsStart({kHead})) {
        InsertHead(InsertHtmlElement());
        return kDone;
    }
    if (token_.kind == TokenKind::kEndTag && !IsEnd({kHead, kBody, kHtml, kBr})) return kDone;
    InsertHead(InsertHtmlElement(kHead));
    return kReprocess;
}

void TreeBuilder::InsertHead(NodeIndex head) noexcept {
    headElement_ = head;
    mode_ = Mode::kInHead;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-inhead
bool TreeBuilder::InHead() noexcept {
    if (IsText() && !InsertLeadingSpace()) return kDone;
    if (IsComment()) {
        InsertComment();
        return kDone;
    }
    if (IsDoctype()) return kDone;
    if (token_.kind == TokenKind::kStartTag) {
        switch (token_.tag) {
            case kHtml: return InBody();
            case kBase:
            case kBasefont:
            case kBgsound:
            case kLink:
            case kMeta: InsertVoid(); return kDone;
            case kTitle: StartRawText(TokenizerState::kRcdata); return kDone;
            case kNoframes:
            case kStyle: StartRawText(TokenizerState::kRawtext); return kDone;
            case kScript: StartRawText(TokenizerState::kScriptData); return kDone;
            case kNoscript:
                InsertHtmlElement();
                mode_ = Mode::kInHeadNoscript;
                return kDone;
            case kTemplate: StartTemplate(); return kDone;
            case kHead: return kDone;
            default: break;
        }
    } else if (token_.kind == TokenKind::kEndTag) {
        switch (token_.tag) {
            case kHead: CloseHead(); return kDone;
            case kTemplate: EndTemplate(); return kDone;
            case kBody:
            case kHtml:
            case kBr: break;
            default: return kDone;
        }
    }
    CloseHead();
    return kReprocess;
}

void TreeBuilder::CloseHead() noexcept {
    PopCurrent();
    mode_ = Mode::kAfterHead;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-inheadnoscript
bool TreeBuilder::InHeadNoscript() noexcept {
    if (IsDoctype()) return kDone;
    if (IsStart({kHtml})) return InBody();
    if (IsEnd({kNoscript})) {
        CloseHeadNoscript();
        return kDone;
    }
    if (IsText() && !InsertLeadingSpace()) return kDone;
    if (IsComment() || IsStart({kBasefont, kBgsound, kLink, kMeta, kNoframes, kStyle})) return InHead();
    if (IsStart({kHead, kNoscript})) return kDone;
    if (token_.kind == TokenKind::kEndTag && !IsEnd({kBr})) return kDone;
    CloseHeadNoscript();
    return kReprocess;
}

void TreeBuilder::CloseHeadNoscript() noexcept {
    PopCurrent();
    mode_ = Mode::kInHead;
}

// https://html.spec.whatwg.org/multipage/parsing.html#the-after-head-insertion-mode
bool TreeBuilder::AfterHead() noexcept {
    if (IsText() && !InsertLeadingSpace()) return kDone;
    if (IsComment()) {
        InsertComment();
        return kDone;
    }
    if (IsDoctype()) return kDone;
    if (token_.kind == TokenKind::kStartTag) {
        switch (token_.tag) {
            case kHtml: return InBody();
            case kBody:
                InsertHtmlElement();
                framesetOk_ = false;
                mode_ = Mode::kInBody;
                return kDone;
            case kFrameset:
                InsertHtmlElement();
                mode_ = Mode::kInFrameset;
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
            case kTitle: return InHeadAgain();
            case kHead: return kDone;
            default: break;
        }
    } else if (token_.kind == TokenKind::kEndTag) {
        if (token_.tag == kTemplate) return InHead();
        if (!IsEnd({kBody, kHtml, kBr})) return kDone;
    }
    InsertBody();
    return kReprocess;
}

// The head element is open once more, for this one token.
bool TreeBuilder::InHeadAgain() noexcept {
    open_.Push(OpenElement{headElement_, kHead, Namespace::kHtml, FlagsOf(kHead, Namespace::kHtml)});
    InHead();
    const unsigned int index = open_.IndexOf(headElement_);
    if (index != OpenElements::kNotFound) open_.RemoveAt(index);
    return kDone;
}

void TreeBuilder::InsertBody() noexcept {
    InsertHtmlElement(kBody);
    mode_ = Mode::kInBody;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-incdata
bool TreeBuilder::TextMode() noexcept {
    if (IsText()) {
        InsertText(token_.content, token_.textKind);
        return kDone;
    }
    PopCurrent();
    mode_ = originalMode_;
    return kDone;
}

}  // namespace ZOTParser
