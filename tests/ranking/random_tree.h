#pragma once

#include <functional>
#include <string>
#include <vector>

namespace QuillNS {

// A number from 0 to `bound` - 1; `bound` is not 0.
using Choose = std::function<unsigned int(unsigned int bound)>;

// A content tree in the language of content_tree.h, every part of it chosen by `choose`. Its tables are named
// T0, T1, ...
std::string RandomTree(const Choose& choose);
// One without captions, summaries and names, such as a page gives.
std::string RandomPlainTree(const Choose& choose);

// Nine tuning values for QuillTextExtractor. Some are the numbers in `ranks`, so that bounds are met exactly.
std::vector<double> RandomTuning(const Choose& choose, const std::vector<double>& ranks);

}  // namespace QuillNS
