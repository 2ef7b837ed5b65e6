#include "marks.h"

#include <algorithm>
#include <string>

#include "start_tag.h"

namespace QuillTool {

namespace {

constexpr std::string_view kSpace = "\t\n\f\r ";
constexpr std::string_view kSectionStart = "<![CDATA[";
constexpr std::string_view kSectionEnd = "]]>";
constexpr const char* kMarkEnd = "</mark>";

std::string MarkStart(const ChosenSpan& span) {
    return "<mark data-quill=\"" + std::to_string(span.run) + "\">";
}

// Characters that stand for themselves, as data.
std::string AsData(std::string_view text) {
    std::string data;
    for (const char c : text) {
        switch (c) {
            case '&': data += "&amp;"; break;
            case '<': data += "&lt;"; break;
            case '\0': data += "\xEF\xBF\xBD"; break;
            default: data += c;
        }
    }
    return data;
}

void MarkData(const ChosenSpan& span, std::string_view page, PageEdits& edits) {
    const std::string_view text = page.substr(span.source.position, span.source.length);
    const std::size_t first = text.find_first_not_of(kSpace);
    if (first == std::string_view::npos) return;
    edits.Insert(span.source.position + first, MarkStart(span));
    edits.Insert(span.source.position + text.find_last_not_of(kSpace) + 1, kMarkEnd);
}

// No tag can stand among characters that stand for themselves. A CDATA section becomes data; an element such
// as xmp becomes a pre, which looks the same, with data in it.
void MarkVerbatim(const ChosenSpan& span, std::string_view page, PageEdits& edits) {
    std::size_t first = span.source.position;
    std::size_t last = first + span.source.length;
    const std::string marked = MarkStart(span) + AsData(page.substr(first, last - first)) + kMarkEnd;
    if (page.substr(0, first).ends_with(kSectionStart)) {
        first -= kSectionStart.size();
        if (page.substr(last).starts_with(kSectionEnd)) last += kSectionEnd.size();
        edits.Replace(first, last - first, marked);
        return;
    }
    const std::string_view name = NameInTag(*span.parent, page);
    edits.Replace(span.parent->SourcePosition() + 1, name.size(), "pre");
    edits.Replace(first, last - first, marked);
    const bool has_end = page.substr(last).starts_with("</");
    if (has_end) edits.Replace(last + 2, name.size(), "pre");
}

}  // namespace

void MarkSpans(std::vector<ChosenSpan> spans, std::string_view page, PageEdits& edits) {
    std::sort(spans.begin(), spans.end(),
              [](const ChosenSpan& a, const ChosenSpan& b) { return a.source.position < b.source.position; });
    for (const ChosenSpan& span : spans) {
        if (span.source.verbatim) {
            MarkVerbatim(span, page, edits);
        } else {
            MarkData(span, page, edits);
        }
    }
}

}  // namespace QuillTool
