#include "tree_builder.h"

// Insertion modes of tables.

namespace ZOTParser {

using enum Tag;

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-intable
bool TreeBuilder::InTable() noexcept {
    switch (token_.kind) {
        case TokenKind::kText:
            if ((open_.Current().flags & kTableStructure) != 0 || open_.Current().Is(kTemplate))
                return InTableText();
            return InTableAnythingElse();
        case TokenKind::kComment: InsertComment(); return kDone;
        case TokenKind::kStartTag: return InTableStartTag();
        case TokenKind::kEndTag: return InTableEndTag();
        default: return kDone;
    }
}

bool TreeBuilder::InTableStartTag() noexcept {
    switch (token_.tag) {
        case kCaption:
            ClearStackBackTo({kTable});
            formatting_.PushMarker();
            InsertHtmlElement();
            mode_ = Mode::kInCaption;
            return kDone;
        case kColgroup:
            ClearStackBackTo({kTable});
            InsertHtmlElement();
            mode_ = Mode::kInColumnGroup;
            return kDone;
        case kCol:
            ClearStackBackTo({kTable});
            InsertHtmlElement(kColgroup);
            mode_ = Mode::kInColumnGroup;
            return kReprocess;
        case kTbody:
        case kTfoot:
        case kThead:
            ClearStackBackTo({kTable});
            InsertHtmlElement();
            mode_ = Mode::kInTableBody;
            return kDone;
        case kTd:
        case kTh:
        case kTr:
            ClearStackBackTo({kTable});
            InsertHtmlElement(kTbody);
            mode_ = Mode::kInTableBody;
            return kReprocess;
        case kTable:
            if (!open_.InTableScope(kTable)) return kDone;
            open_.PopUntil(kTable);
            ResetInsertionMode();
            return kReprocess;
        case kStyle:
        case kScript:
        case kTemplate: return InHead();
        case kInput:
            if ((token_.attributes & kHasType) == 0 || !HasAttributeValue("type", {"hidden"})) break;
            InsertVoid();
            return kDone;
        case kForm:
            if (open_.Has(kTemplate) || formElement_ != kNoNode) return kDone;
            formElement_ = InsertHtmlElement();
            PopCurrent();
            return kDone;
        default: break;
    }
    return InTableAnythingElse();
}

bool TreeBuilder::InTableEndTag() noexcept {
    switch (token_.tag) {
        case kTable:
            if (!open_.InTableScope(kTable)) return kDone;
            open_.PopUntil(kTable);
            ResetInsertionMode();
            return kDone;
        case kBody:
        case kCaption:
        case kCol:
        case kColgroup:
        case kHtml:
        case kTbody:
        case kTd:
        case kTfoot:
        case kTh:
        case kThead:
        case kTr: return kDone;
        case kTemplate: return InHead();
        default: return InTableAnythingElse();
    }
}

// What does not belong in a table stands before it.
bool TreeBuilder::InTableAnythingElse() noexcept {
    fosterParenting_ = true;
    const bool again = InBody();
    fosterParenting_ = false;
    return again;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-intabletext
bool TreeBuilder::InTableText() noexcept {
    if (HasVisibleText()) return InTableAnythingElse();
    if (!IsOnlyNul()) InsertText(token_.content, token_.textKind);
    return kDone;
}

// "Clear the stack back to a table context", and to the contexts of a body and of a row. It never leaves the
// table.
void TreeBuilder::ClearStackBackTo(std::initializer_list<Tag> context) noexcept {
    while ((open_.Current().flags & kTableScope) == 0) {
        for (const Tag tag : context) {
            if (open_.Current().Is(tag)) return;
        }
        PopCurrent();
    }
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-incaption
bool TreeBuilder::InCaption() noexcept {
    if (IsEnd({kCaption})) {
        CloseCaption();
        return kDone;
    }
    if (IsStart({kCaption, kCol, kColgroup, kTbody, kTd, kTfoot, kTh, kThead, kTr}) || IsEnd({kTable})) {
        return CloseCaption();
    }
    if (IsEnd({kBody, kCol, kColgroup, kHtml, kTbody, kTd, kTfoot, kTh, kThead, kTr})) return kDone;
    return InBody();
}

bool TreeBuilder::CloseCaption() noexcept {
    if (!open_.InTableScope(kCaption)) return kDone;
    GenerateImpliedEndTags();
    open_.PopUntil(kCaption);
    formatting_.ClearToMarker();
    mode_ = Mode::kInTable;
    return kReprocess;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-incolgroup
bool TreeBuilder::InColumnGroup() noexcept {
    if (IsText() && !InsertLeadingSpace()) return kDone;
    if (IsComment()) {
        InsertComment();
        return kDone;
    }
    if (IsDoctype()) return kDone;
    if (IsStart({kHtml})) return InBody();
    if (IsStart({kCol})) {
        InsertVoid();
        return kDone;
    }
    if (IsEnd({kCol})) return kDone;
    if (IsStart({kTemplate}) || IsEnd({kTemplate})) return InHead();
    if (!open_.Current().Is(kColgroup)) return kDone;
    PopCurrent();
    mode_ = Mode::kInTable;
    return IsEnd({kColgroup}) ? kDone : kReprocess;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-intbody
bool TreeBuilder::InTableBody() noexcept {
    if (token_.kind == TokenKind::kStartTag) {
        switch (token_.tag) {
            case kTr:
                ClearStackBackTo({kTbody, kTfoot, kThead});
                InsertHtmlElement();
                mode_ = Mode::kInRow;
                return kDone;
            case kTh:
            case kTd:
                ClearStackBackTo({kTbody, kTfoot, kThead});
                InsertHtmlElement(kTr);
                mode_ = Mode::kInRow;
                return kReprocess;
            case kCaption:
            case kCol:
            case kColgroup:
            case kTbody:
            case kTfoot:
            case kThead: return CloseTableBody();
            default: break;
        }
    } else if (token_.kind == TokenKind::kEndTag) {
        switch (token_.tag) {
            case kTbody:
            case kTfoot:
            case kThead:
                if (open_.InTableScope(token_.tag)) CloseTableBody();
                return kDone;
            case kTable: return CloseTableBody();
            case kBody:
            case kCaption:
            case kCol:
            case kColgroup:
            case kHtml:
            case kTd:
            case kTh:
            case kTr: return kDone;
            default: break;
        }
    }
    return InTable();
}

bool TreeBuilder::CloseTableBody() noexcept {
    if (!open_.InTableScope(kTbody) && !open_.InTableScope(kThead) && !open_.InTableScope(kTfoot))
        return kDone;
    ClearStackBackTo({kTbody, kTfoot, kThead});
    PopCurrent();
    mode_ = Mode::kInTable;
    return kReprocess;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-intr
bool TreeBuilder::InRow() noexcept {
    if (token_.kind == TokenKind::kStartTag) {
        switch (token_.tag) {
            case kTh:
            case kTd:
                ClearStackBackTo({kTr});
                InsertHtmlElement();
                mode_ = Mode::kInCell;
                formatting_.PushMarker();
                return kDone;
            case kCaption:
            case kCol:
            case kColgroup:
            case kTbody:
            case kTfoot:
            case kThead:
            case kTr: return CloseRow();
            default: break;
        }
    } else if (token_.kind == TokenKind::kEndTag) {
        switch (token_.tag) {
            case kTr: CloseRow(); return kDone;
            case kTable: return CloseRow();
            case kTbody:
            case kTfoot:
            case kThead: return open_.InTableScope(token_.tag) ? CloseRow() : kDone;
            case kBody:
            case kCaption:
            case kCol:
            case kColgroup:
            case kHtml:
            case kTd:
            case kTh: return kDone;
            default: break;
        }
    }
    return InTable();
}

bool TreeBuilder::CloseRow() noexcept {
    if (!open_.InTableScope(kTr)) return kDone;
    ClearStackBackTo({kTr});
    PopCurrent();
    mode_ = Mode::kInTableBody;
    return kReprocess;
}

// https://html.spec.whatwg.org/multipage/parsing.html#parsing-main-intd
bool TreeBuilder::InCell() noexcept {
    if (token_.kind == TokenKind::kStartTag) {
        switch (token_.tag) {
            case kCaption:
            case kCol:
            case kColgroup:
            case kTbody:
            case kTd:
            case kTfoot:
            case kTh:
            case kThead:
            case kTr: CloseCell(); return kReprocess;
            default: break;
        }
    } else if (token_.kind == TokenKind::kEndTag) {
        switch (token_.tag) {
            case kTd:
            case kTh:
                if (open_.InTableScope(token_.tag)) CloseCell();
                return kDone;
            case kBody:
            case kCaption:
            case kCol:
            case kColgroup:
            case kHtml: return kDone;
            case kTable:
            case kTbody:
            case kTfoot:
            case kThead:
            case kTr:
                if (!open_.InTableScope(token_.tag)) return kDone;
                CloseCell();
                return kReprocess;
            default: break;
        }
    }
    return InBody();
}

// "Close the cell." The end tag of a cell closes the cell of its own name, any other token the innermost one.
void TreeBuilder::CloseCell() noexcept {
    GenerateImpliedEndTags();
    if (IsEnd({kTd, kTh})) {
        open_.PopUntil(token_.tag);
    } else if (open_.InTableScope(kTd)) {
        open_.PopUntil(kTd);
    } else if (open_.InTableScope(kTh)) {
        open_.PopUntil(kTh);
    }
    formatting_.ClearToMarker();
    mode_ = Mode::kInRow;
}

}  // namespace ZOTParser
