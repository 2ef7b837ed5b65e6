#pragma once

#include <string>

// A page that a seed stands for. Its words are "w1", "w2" and so on, in document order and with white space
// between them, so that a text shows by itself what is missing or out of order.
//
// Links pages have all their words in links, in nothing that any reading leaves out.
enum class PageKind { kContent, kLinks };
std::string RandomPage(unsigned int seed, PageKind kind);
