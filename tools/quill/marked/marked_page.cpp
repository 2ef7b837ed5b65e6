#include "marked_page.h"

#include "choice.h"
#include "chosen_spans.h"
#include "marks.h"
#include "outlines.h"
#include "page_edits.h"
#include "safety.h"

namespace QuillTool {

namespace {

constexpr const char* kMarkStyle =
    "<style>mark[data-quill] { color: black !important; background: #ff6 !important; }</style>";

}  // namespace

bool MarkPage(ZOTParser::HtmlDocTree& tree, std::string_view page, Marking marking, std::string& marked) {
    Choice choice;
    if (!Choose(tree, choice)) return false;
    PageEdits edits;
    std::string style = kMarkStyle;
    if (marking == Marking::kExplain) style += DrawOutlines(tree, choice, page, edits);
    MakeSafe(tree, page, style, edits);
    MarkSpans(FindChosenSpans(tree, choice), page, edits);
    marked = edits.Apply(page);
    return true;
}

}  // namespace QuillTool
