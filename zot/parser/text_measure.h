#pragma once

#include "node_store.h"

namespace ZOTParser {

// What a text is made of, counted on the bytes of the source, which is exact enough to judge a text by and
// costs a fraction of decoding it: a character reference counts as the letters that spell it.
struct TextMeasure {
    unsigned int words = 0;  // runs of bytes above the blank
    unsigned int bytes = 0;  // of those runs
    unsigned int commas = 0;
    unsigned int stops = 0;  // full stops, exclamation and question marks
};

TextMeasure MeasureText(const NodeStore& nodes, NodeIndex text) noexcept;

}  // namespace ZOTParser
