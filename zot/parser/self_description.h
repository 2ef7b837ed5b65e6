#pragma once

#include "node_store.h"

namespace ZOTParser {

// What an element says about its place on the page, by its tag and its attributes.
enum class Description : std::uint8_t {
    kNone,
    kHidden,          // `hidden`, aria-hidden="true", or an inline style that takes it off the page
    kAround,          // it stands around the content: nav, aside, footer, a form for searching, ...
    kMain,            // it is the main content
    kWithoutScripts,  // kept for browsers without scripts
};

// What the tag alone says.
inline Description DescriptionOf(Tag tag) noexcept {
    switch (tag) {
        case Tag::kNav:
        case Tag::kAside:
        case Tag::kFooter: return Description::kAround;
        case Tag::kMain: return Description::kMain;
        case Tag::kNoscript: return Description::kWithoutScripts;
        default: return Description::kNone;
    }
}

// The same with the element's attributes, one of which is of those that kDescribesItself stands for.
Description DescriptionByAttributes(const NodeStore& nodes, NodeIndex element) noexcept;

// https://www.w3.org/TR/html-aam-1.0/#html-element-role-mappings
// https://www.w3.org/TR/wai-aria-1.2/#landmark_roles
inline Description DescriptionOf(const NodeStore& nodes, NodeIndex element) noexcept {
    if (nodes.NamespaceOf(element) != Namespace::kHtml) return Description::kNone;
    return nodes.HasAttributeBit(element, kDescribesItself) ? DescriptionByAttributes(nodes, element)
                                                            : DescriptionOf(nodes.TagOf(element));
}

// Has a formatting element remember what it says, and with it the clones that are made of it afterwards: each
// of them would read the same tag again, which may be as long as the page.
void NoteDescription(NodeStore& nodes, NodeIndex element) noexcept;

}  // namespace ZOTParser
