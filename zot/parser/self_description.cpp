#include "self_description.h"

#include "tokenizer.h"

namespace ZOTParser {
namespace {

// Landmarks, and what comes up for a moment above the content.
constexpr std::string_view kRolesAround[] = {"navigation", "contentinfo", "complementary", "search",
                                             "dialog",     "banner",      "alert",         "alertdialog",
                                             "status",     "menu",        "listbox",       "tooltip"};

// An element that may be there in several copies is not the main one.
Description DescriptionOfRole(Span role, Tag tag) noexcept {
    const bool isCopied = (FlagsOf(tag, Namespace::kHtml) & kFormatting) != 0;
    if (IsIgnoringCase(role, "main")) return isCopied ? Description::kNone : Description::kMain;
    for (const std::string_view around : kRolesAround) {
        if (IsIgnoringCase(role, around)) return Description::kAround;
    }
    return Description::kNone;
}

// Whether the style ends in `property`, but for white space.
bool EndsInProperty(Span style, std::string_view property) noexcept {
    while (style.first < style.last && IsHtmlSpace(style.last[-1])) --style.last;
    return style.Size() >= property.size() &&
           StartsWithIgnoringCase(style.last - property.size(), style.last, property);
}

// Whether the style keeps the element from being shown.
bool HidesByStyle(Span style) noexcept {
    const char* const last = style.last;
    for (const char* colon = FindByte(style.first, last, ':'); colon < last;) {
        const char* const value = SkipHtmlSpace(colon + 1, last);
        const Span before{style.first, colon};
        if (StartsWithIgnoringCase(value, last, "none") && EndsInProperty(before, "display")) return true;
        if (StartsWithIgnoringCase(value, last, "hidden") && EndsInProperty(before, "visibility"))
            return true;
        colon = FindByte(value, last, ':');
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

Description DescriptionByAttributes(const NodeStore& nodes, NodeIndex element) noexcept {
    Description description = DescriptionOf(nodes.TagOf(element));
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
