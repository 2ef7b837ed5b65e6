#pragma once

#include <string_view>
#include <vector>

#include "chosen_spans.h"
#include "page_edits.h"

namespace QuillTool {

// Puts <mark data-quill="RUN"> around the spans' characters, but for the white space at their ends. No mark
// reaches over markup, so that the browser builds the tree that it builds without them.
void MarkSpans(std::vector<ChosenSpan> spans, std::string_view page, PageEdits& edits);

}  // namespace QuillTool
