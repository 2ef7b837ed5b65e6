#include "self_description.h"

#include "tokenizer.h"

namespace ZOTParser {
namespace {

constexpr std::string_view kRolesAround[] = {"navigation", "contentinfo", "complementary",
                                             "search",     "dialog",      "banner"};

Description DescriptionOf(Tag tag) noexcept {
    switch (tag) {
        case Tag::kNav:
        case Tag::kAside:
        case Tag::kFooter: return Description::kAround;
        case Tag::kMain: return Description::kMain;
        case Tag::kNoscript: return Description::kWithoutScripts;
        default: return Description::kNone;
    }
}

// An element that may be there in several copies is not the main one.
Description DescriptionOfRole(Span role, Tag tag) noexcept {
    const bool isCopied = (FlagsOf(tag, Namespace::kHtml) & kFormatting) != 0;
    if (IsIgnoringCase(role, "main")) return isCopied ? Description::kNone : Description::kMain;
    for (const std::string_view around : kRolesAround) {
        if (IsIgnoringCase(role, around)) return Description::kAround;
    }
    return Description::kNone;
}

// Whether `property` stands before the colon at `colon`, and `value` behind it.
bool IsDeclaration(Span style, const char* colon, std::string_view property,
                   std::string_view value) noexcept {
    if (!StartsWithIgnoringCase(SkipHtmlSpace(colon + 1, style.last), style.last, value)) return false;
    while (colon > style.first && IsHtmlSpace(colon[-1])) --colon;
    const auto length = static_cast<std::ptrdiff_t>(property.size());
    return colon - style.first >= length && StartsWithIgnoringCase(colon - length, colon, property);
}

// Whether the style keeps the element from being shown.
bool HidesByStyle(Span style) noexcept {
    for (const char* at = FindByte(style.first, style.last, ':'); at < style.last;
         at = FindByte(at + 1, style.last, ':')) {
        if (IsDeclaration(style, at, "display", "none") || IsDeclaration(style, at, "visibility", "hidden"))
            return true;
    }
    return false;
}

// A link that only listeners are spared leads where another one leads too, but what it says is seen.
bool Hides(const Attribute& attribute, Tag tag) noexcept {
    if (IsIgnoringCase(attribute.name, "hidden")) return true;
    if (IsIgnoringCase(attribute.name, "aria-hidden"))
        return tag != Tag::kA && IsIgnoringCase(attribute.value, "true");
    return IsIgnoringCase(attribute.name, "style") && HidesByStyle(attribute.value);
}

}  // namespace

Description DescriptionOf(const NodeStore& nodes, NodeIndex element) noexcept {
    if (nodes.NamespaceOf(element) != Namespace::kHtml) return Description::kNone;
    Description description = DescriptionOf(nodes.TagOf(element));
    if (!nodes.HasAttributeBit(element, kDescribesItself)) return description;
    if (const unsigned int note = nodes.Note(element)) return static_cast<Description>(note - 1);
    nodes.VisitAttributes(nodes[element], [&](const Attribute& attribute) {
        if (Hides(attribute, nodes.TagOf(element))) {
            description = Description::kHidden;
        } else if (description == Description::kNone && IsIgnoringCase(attribute.name, "role")) {
            description = DescriptionOfRole(attribute.value, nodes.TagOf(element));
        }
        return description != Description::kHidden;
    });
    return description;
}

void NoteDescription(NodeStore& nodes, NodeIndex element) noexcept {
    if (nodes.Note(element) != 0 || !nodes.HasAttributeBit(element, kDescribesItself)) return;
    nodes.SetNote(element, static_cast<unsigned int>(DescriptionOf(nodes, element)) + 1);
}

}  // namespace ZOTParser
