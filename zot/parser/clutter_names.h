#pragma once

#include "node_store.h"

namespace ZOTParser {

// What a class or an id calls an element: names for what stands around the content, such as "related-posts",
// "siteSidebar" or "cookie_banner". They are hints and no more: who asks weighs the text too. Of several
// names the last one here counts.
enum class ClutterName {
    kNone,
    kMenu,      // of links, or of dishes
    kComments,  // below an article, or in a forum
    kClutter,   // anything else
};

ClutterName NameOf(const NodeStore& nodes, NodeIndex element) noexcept;

}  // namespace ZOTParser
