#include "safety.h"

#include <algorithm>
#include <vector>

#include "node_walk.h"
#include "page_ending.h"
#include "start_tag.h"

namespace QuillTool {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr const char* kHead =
    "<meta charset=\"utf-8\">"
    "<meta http-equiv=\"Content-Security-Policy\" content=\"script-src 'none'; object-src 'none'; "
    "frame-src 'none'; worker-src 'none'; connect-src 'none'; form-action 'none'\">";

constexpr std::string_view kNoScript = "noscript";
constexpr const char* kNoScriptPrefix = "quill-";

// Where no tag begins: in texts and in the insides of start tags. The ranges are in the order of the page and
// do not overlap.
class Insides {
public:
    explicit Insides(const ZOTParser::HtmlDocTree& tree) {
        std::vector<ZOTParser::TextSpan> spans;
        WalkNodes(tree.Entries(), nullptr, [&](const Node& node, const Node*) {
            if (node.Keyword() == ZOTParser::kKeywordText) {
                node.GetSpans(spans);
                for (const auto& span : spans) Add(span.position, span.length);
            } else if (node.SourceLength() != 0) {
                Add(node.SourcePosition() + 1, node.SourceLength() - 1);
            }
        });
        std::sort(ranges_.begin(), ranges_.end(), [](Range a, Range b) { return a.first < b.first; });
    }

    bool Contain(std::size_t position) const {
        const auto next = std::upper_bound(ranges_.begin(), ranges_.end(), position,
                                           [](std::size_t at, Range range) { return at < range.first; });
        return next != ranges_.begin() && position < std::prev(next)->last;
    }

private:
    struct Range {
        std::size_t first;
        std::size_t last;
    };

    void Add(std::size_t first, std::size_t length) { ranges_.push_back({first, first + length}); }

    std::vector<Range> ranges_;
};

// Where the first tag or text begins that comes to something.
std::size_t FirstPlace(const ZOTParser::HtmlDocTree& tree, std::string_view page) {
    std::size_t first = page.size();
    WalkNodes(tree.Entries(), nullptr, [&](const Node& node, const Node*) {
        if (node.SourceLength() != 0) first = std::min<std::size_t>(first, node.SourcePosition());
    });
    return first;
}

bool Harms(const Node& meta) {
    std::string value;
    meta.GetParam("charset", value);
    if (!value.empty()) return true;
    meta.GetParam("http-equiv", value);
    return IsName(value, "refresh") || IsName(value, "content-type") ||
           IsName(value, "content-security-policy");
}

void DropHarmfulMetas(const ZOTParser::HtmlDocTree& tree, std::string_view page, PageEdits& edits) {
    WalkNodes(tree.Entries(), nullptr, [&](const Node& node, const Node*) {
        if (IsName(NameInTag(node, page), "meta") && Harms(node)) {
            edits.Replace(node.SourcePosition(), node.SourceLength(), "");
        }
    });
}

// A browser that can run scripts takes what stands in a noscript for plain text, and would build another tree
// than the one that was read. The element gets a name without a meaning, which the standard treats as it
// treats noscript where there are no scripts. Comments may get it too.
void OpenNoScript(const ZOTParser::HtmlDocTree& tree, std::string_view page, PageEdits& edits) {
    const Insides insides(tree);
    for (std::size_t at = page.find('<'); at != std::string_view::npos; at = page.find('<', at + 1)) {
        const std::size_t name = at + (page.substr(at + 1).starts_with('/') ? 2 : 1);
        if (name >= page.size() || !IsName(page.substr(name, kNoScript.size()), kNoScript)) continue;
        if (!insides.Contain(at)) edits.Insert(name, kNoScriptPrefix);
    }
}

}  // namespace

void MakeSafe(const ZOTParser::HtmlDocTree& tree, std::string_view page, const std::string& style,
              PageEdits& edits) {
    if (!page.starts_with(kByteOrderMark)) edits.Insert(0, std::string(kByteOrderMark));
    edits.Insert(FirstPlace(tree, page), kHead + style);
    DropHarmfulMetas(tree, page, edits);
    OpenNoScript(tree, page, edits);
}

}  // namespace QuillTool
