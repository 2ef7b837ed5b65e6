#include "character_reference.h"
#include "self_description.h"
#include "tree_builder.h"

// Putting nodes and characters into the tree.

namespace ZOTParser {

using enum Tag;

namespace {

bool IsSpaceReference(const CharacterReference& reference) noexcept {
    return reference.second == 0 && reference.first <= ' ' && IsHtmlSpace(static_cast<char>(reference.first));
}

// Bytes of the white space character at `at`, written as itself or as a reference; 0 when there is none.
unsigned int SpaceAt(const char* at, const char* end, TextKind kind) noexcept {
    if (at >= end) return 0;
    if (IsHtmlSpace(*at)) return 1;
    if (*at != '&' || kind == TextKind::kRaw) return 0;
    const CharacterReference reference = MatchCharacterReference(at, end, false);
    return IsSpaceReference(reference) ? reference.length : 0;
}

}  // namespace

// --- Elements

// https://html.spec.whatwg.org/multipage/parsing.html#appropriate-place-for-inserting-a-node
TreeBuilder::Place TreeBuilder::AppropriatePlace(const OpenElement& target) const noexcept {
    if (!fosterParenting_ || (target.flags & kTableStructure) == 0) [[likely]] {
        return Place{target.node, kNoNode};
    }
    const unsigned int table = open_.LastIndexOf(kTable);
    const unsigned int templ = open_.LastIndexOf(kTemplate);
    if (templ != OpenElements::kNotFound && (table == OpenElements::kNotFound || templ > table)) {
        return Place{open_[templ].node, kNoNode};
    }
    if (table == OpenElements::kNotFound) return Place{open_[0].node, kNoNode};
    if (nodes_.Parent(open_[table].node) != kNoNode) {
        return Place{nodes_.Parent(open_[table].node), open_[table].node};
    }
    return Place{open_[table - 1].node, kNoNode};
}

void TreeBuilder::InsertAt(Place place, NodeIndex node) noexcept {
    if (place.before == kNoNode) {
        nodes_.Append(place.parent, node);
    } else {
        nodes_.InsertBefore(place.before, node);
    }
}

OpenElement TreeBuilder::NewElement(Tag tag, Namespace ns, bool spelledOut) noexcept {
    const NodeIndex node =
        spelledOut ? nodes_.NewElement(tag, ns, token_.attributes, nodes_.PositionOf(token_.span.first),
                                       static_cast<unsigned int>(token_.span.Size()))
                   : nodes_.NewElement(tag, ns, 0, 0, 0);
    return OpenElement{node, tag, ns, FlagsOf(tag, ns)};
}

NodeIndex TreeBuilder::CloneElement(NodeIndex element) noexcept {
    NoteDescription(nodes_, element);
    return nodes_.Clone(element);
}

NodeIndex TreeBuilder::InsertAndPush(const OpenElement& element) noexcept {
    InsertAt(AppropriatePlace(open_.Current()), element.node);
    open_.Push(element);
    return element.node;
}

NodeIndex TreeBuilder::InsertHtmlElement() noexcept {
    MakeRoom();
    return InsertAndPush(NewElement(token_.tag, Namespace::kHtml, true));
}

NodeIndex TreeBuilder::InsertHtmlElement(Tag tag) noexcept {
    MakeRoom();
    return InsertAndPush(NewElement(tag, Namespace::kHtml, false));
}

NodeIndex TreeBuilder::InsertForeignElement(Namespace ns) noexcept {
    MakeRoom();
    OpenElement element = NewElement(token_.tag, ns, true);
    AddIntegrationPoint(element, true);
    return InsertAndPush(element);
}

// https://html.spec.whatwg.org/multipage/parsing.html#html-integration-point
void TreeBuilder::AddIntegrationPoint(OpenElement& element, bool hasToken) const noexcept {
    if (element.ns == Namespace::kSvg) {
        if (element.tag == kForeignObject || element.tag == kDesc || element.tag == kTitle) {
            element.flags |= kHtmlIntegrationPoint;
        }
    } else if (element.ns == Namespace::kMathMl) {
        if (element.tag == kAnnotationXml) {
            if (hasToken && HasAttributeValue("encoding", {"text/html", "application/xhtml+xml"})) {
                element.flags |= kHtmlIntegrationPoint;
            }
        } else if ((element.flags & kScope) != 0) {  // mi, mo, mn, ms, mtext
            element.flags |= kMathMlTextIntegrationPoint;
        }
    }
}

void TreeBuilder::InsertVoid() noexcept {
    InsertHtmlElement();
    PopCurrent();
}

// https://html.spec.whatwg.org/multipage/parsing.html#generic-raw-text-element-parsing-algorithm
void TreeBuilder::StartRawText(TokenizerState state) noexcept {
    InsertHtmlElement();
    tokenizer_.SetState(state);
    tokenizer_.SetLastStartTag(NameOf(token_.tag));
    originalMode_ = mode_;
    mode_ = Mode::kText;
}

// --- Comments

void TreeBuilder::InsertComment(NodeIndex parent) noexcept {
    InsertCommentAt(Place{parent, kNoNode});
}

void TreeBuilder::InsertComment() noexcept {
    InsertCommentAt(AppropriatePlace(open_.Current()));
}

void TreeBuilder::InsertCommentAt(Place place) noexcept {
    if (!options_.keepAll) {
        // What follows is a text of its own, as if the comment stood between.
        const NodeIndex text = TextBefore(place);
        if (text != kNoNode) nodes_.CloseText(text);
        return;
    }
    InsertAt(place, nodes_.NewOther(NodeType::kComment, nodes_.PositionOf(token_.content.first),
                                    static_cast<unsigned int>(token_.content.Size())));
}

// --- Characters

NodeIndex TreeBuilder::TextBefore(Place place) const noexcept {
    const NodeIndex node =
        place.before == kNoNode ? nodes_.LastChild(place.parent) : nodes_.PreviousSibling(place.before);
    return node != kNoNode && nodes_.IsOpenText(node) ? node : kNoNode;
}

// https://html.spec.whatwg.org/multipage/parsing.html#insert-a-character
void TreeBuilder::InsertText(Span text, TextKind kind) noexcept {
    if (text.first == text.last) return;
    const Place place = AppropriatePlace(open_.Current());
    const unsigned int position = nodes_.PositionOf(text.first);
    const auto length = static_cast<unsigned int>(text.Size());
    const NodeIndex before = TextBefore(place);
    if (before != kNoNode) {
        nodes_.AppendToText(before, kind, position, length);
    } else {
        InsertAt(place, nodes_.NewText(kind, position, length));
    }
}

Span TreeBuilder::LeadingSpace() const noexcept {
    const char* at = token_.content.first;
    while (const unsigned int length = SpaceAt(at, token_.content.last, token_.textKind)) at += length;
    return Span{token_.content.first, at};
}

bool TreeBuilder::SkipLeadingSpace() noexcept {
    token_.content.first = LeadingSpace().last;
    return token_.content.first != token_.content.last;
}

bool TreeBuilder::InsertLeadingSpace() noexcept {
    InsertText(LeadingSpace(), token_.textKind);
    return SkipLeadingSpace();
}

void TreeBuilder::InsertOnlySpace() noexcept {
    while (InsertLeadingSpace()) {
        const char*& at = token_.content.first;
        while (at < token_.content.last && SpaceAt(at, token_.content.last, token_.textKind) == 0) ++at;
    }
}

// Whether the text holds a character other than white space and NUL, which tree construction drops.
bool TreeBuilder::HasVisibleText() const noexcept {
    const char* at = token_.content.first;
    while (at < token_.content.last) {
        const unsigned int length = *at == '\0' ? 1 : SpaceAt(at, token_.content.last, token_.textKind);
        if (length == 0) return true;
        at += length;
    }
    return false;
}

bool TreeBuilder::IsOnlyNul() const noexcept {
    const char* at = token_.content.first;
    while (at < token_.content.last && *at == '\0') ++at;
    return at == token_.content.last;
}

// The newline at the start of a pre, listing or textarea element is not part of it. True when nothing is left
// of the text.
bool TreeBuilder::SkipNewline() noexcept {
    skipNewline_ = false;
    if (!IsText()) return false;
    Span& text = token_.content;
    if (*text.first == '\r') {
        text.first += text.Size() > 1 && text.first[1] == '\n' ? 2 : 1;
    } else if (*text.first == '\n') {
        ++text.first;
    } else if (*text.first == '&' && token_.textKind != TextKind::kRaw) {
        const CharacterReference reference = MatchCharacterReference(text.first, text.last, false);
        if (reference.first == '\n' && reference.second == 0) text.first += reference.length;
    }
    return text.first == text.last;
}

}  // namespace ZOTParser
