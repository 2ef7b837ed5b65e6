#include "hidden_element.h"

#include "tokenizer.h"

namespace ZOTParser {
namespace {

constexpr std::string_view kClutterRoles[] = {"navigation", "contentinfo", "complementary",
                                              "search",     "dialog",      "banner"};

// Whether `property` stands before the colon at `colon`, and `value` behind it.
bool IsDeclaration(Span style, const char* colon, std::string_view property,
                   std::string_view value) noexcept {
    if (!StartsWithIgnoringCase(SkipHtmlSpace(colon + 1, style.last), style.last, value)) return false;
    while (colon > style.first && IsHtmlSpace(colon[-1])) --colon;
    const auto length = static_cast<std::ptrdiff_t>(property.size());
    return colon - style.first >= length && StartsWithIgnoringCase(colon - length, colon, property);
}

// Whether the style keeps the element from being shown.
bool Hides(Span style) noexcept {
    for (const char* at = FindByte(style.first, style.last, ':'); at < style.last;
         at = FindByte(at + 1, style.last, ':')) {
        if (IsDeclaration(style, at, "display", "none") || IsDeclaration(style, at, "visibility", "hidden"))
            return true;
    }
    return false;
}

bool IsClutterRole(Span role) noexcept {
    for (const std::string_view clutter : kClutterRoles) {
        if (IsIgnoringCase(role, clutter)) return true;
    }
    return false;
}

}  // namespace

Standing StandingOf(const NodeStore& nodes, NodeIndex element) noexcept {
    if (!nodes.HasAttributeBit(element, kHasStanding)) return Standing::kShown;
    if (const unsigned int note = nodes.Note(element)) return static_cast<Standing>(note - 1);
    Standing standing = Standing::kShown;
    nodes.VisitAttributes(nodes[element], [&](const Attribute& attribute) {
        const Span name = attribute.name;
        if (IsIgnoringCase(name, "hidden") ||
            (IsIgnoringCase(name, "aria-hidden") && IsIgnoringCase(attribute.value, "true")) ||
            (IsIgnoringCase(name, "style") && Hides(attribute.value))) {
            standing = Standing::kHidden;
        } else if (standing == Standing::kShown && IsIgnoringCase(name, "role") &&
                   IsClutterRole(attribute.value)) {
            standing = Standing::kClutter;
        }
        return standing != Standing::kHidden;
    });
    return standing;
}

void NoteStanding(NodeStore& nodes, NodeIndex element) noexcept {
    if (nodes.Note(element) != 0 || !nodes.HasAttributeBit(element, kHasStanding)) return;
    nodes.SetNote(element, static_cast<unsigned int>(StandingOf(nodes, element)) + 1);
}

}  // namespace ZOTParser
