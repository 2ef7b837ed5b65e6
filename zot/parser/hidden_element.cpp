#include "hidden_element.h"

#include "tokenizer.h"

namespace ZOTParser {
namespace {

constexpr std::string_view kClutterRoles[] = {"navigation", "contentinfo", "complementary",
                                              "search",     "dialog",      "banner"};

// Whether the style declares `property` with `value`, whatever white space stands around the colon.
bool Declares(Span style, std::string_view property, std::string_view value) noexcept {
    for (const char* at = style.first; at < style.last; ++at) {
        if (!StartsWithIgnoringCase(at, style.last, property)) continue;
        const char* next = SkipHtmlSpace(at + property.size(), style.last);
        if (next == style.last || *next != ':') continue;
        if (StartsWithIgnoringCase(SkipHtmlSpace(next + 1, style.last), style.last, value)) return true;
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
    Standing standing = Standing::kShown;
    nodes.VisitAttributes(nodes[element], [&](const Attribute& attribute) {
        const Span name = attribute.name;
        if (IsIgnoringCase(name, "hidden") ||
            (IsIgnoringCase(name, "aria-hidden") && IsIgnoringCase(attribute.value, "true")) ||
            (IsIgnoringCase(name, "style") && (Declares(attribute.value, "display", "none") ||
                                               Declares(attribute.value, "visibility", "hidden")))) {
            standing = Standing::kHidden;
        } else if (standing == Standing::kShown && IsIgnoringCase(name, "role") &&
                   IsClutterRole(attribute.value)) {
            standing = Standing::kClutter;
        }
        return standing != Standing::kHidden;
    });
    return standing;
}

}  // namespace ZOTParser
