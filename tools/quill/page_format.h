#pragma once

#include <string>

#include "extractor.h"

namespace QuillTool {

// What is shown of a page. The last two are pages of their own and not formatted here.
enum class Show {
    kText,          // its main content
    kDocumentText,  // all of its text
    kType,          // the kind of page
    kJson,          // all of these, and where the main content stands
    kHighlight,     // the page itself, the main content marked
    kExplain,       // and the ranks of its tables
};

// Whole lines of UTF-8, none of them blank at the end, or nothing when there is nothing to show. `name` is
// the page's file; when it is empty, the type stands alone on its line.
std::string FormatPage(const std::string& name, PageText page, Show show);

}  // namespace QuillTool
