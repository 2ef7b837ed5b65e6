#pragma once

#include "node_store.h"

namespace ZOTParser {

// What an element says about itself in the attributes that can keep it from being content.
enum class Standing { kShown, kHidden, kClutter };

// Hidden: `hidden`, aria-hidden="true", an inline style that takes it off the page. Clutter: an ARIA landmark
// role that stands around the content. https://www.w3.org/TR/wai-aria-1.2/#landmark_roles
Standing StandingOf(const NodeStore& nodes, NodeIndex element) noexcept;

// Has the element remember its standing, and with it the clones that are made of it afterwards: each of them
// would read the same tag again, which may be as long as the page.
void NoteStanding(NodeStore& nodes, NodeIndex element) noexcept;

}  // namespace ZOTParser
