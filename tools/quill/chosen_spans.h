#pragma once

#include <vector>
#include <zot/parser.h>

#include "choice.h"
#include "node_walk.h"

namespace QuillTool {

// Characters of the page that were written, in bytes of the UTF-8 text that was parsed.
struct ChosenSpan {
    ZOTParser::TextSpan source;
    unsigned int run;    // number of the run of text that they belong to, from 1 and in the order of the text
    const Node* parent;  // the element in which they stand
};

// The places of all runs that `choice`, made from `tree`, writes, in the order of the text.
std::vector<ChosenSpan> FindChosenSpans(const ZOTParser::HtmlDocTree& tree, const Choice& choice);

}  // namespace QuillTool
