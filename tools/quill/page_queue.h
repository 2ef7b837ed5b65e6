#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace QuillTool {

// What came of one page.
struct PageOutput {
    std::string text;     // what is to be written
    std::string problem;  // in words for people; empty when there is none
};

using MakePage = std::function<PageOutput(std::size_t)>;
using TakePage = std::function<bool(std::size_t, PageOutput&)>;

// Calls `make` for the pages 0 to `count` - 1 on `jobs` threads, and `take` for each on the calling thread,
// in order, until `take` returns false. The threads run ahead of `take` by a bounded number of pages and
// bytes of output, so that a slow first page does not fill the memory. With one job everything runs on the
// calling thread. `make` throws nothing.
void RunPages(std::size_t count, unsigned int jobs, const MakePage& make, const TakePage& take);

}  // namespace QuillTool
