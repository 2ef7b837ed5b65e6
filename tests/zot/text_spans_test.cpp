#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>
#include <zot/parser.h>

#include "zot/parsed_page.h"

namespace {

using namespace std::string_view_literals;
using namespace ZOTParser;

// The characters of each text in the page's own bytes: parts of a text apart by "|", verbatim ones in
// brackets, texts apart by ";".
std::string DumpSpans(std::string_view page) {
    const ParsedPage parsed(page);
    std::string line;
    VisitNodes(parsed.Tree().Entries(), [&](const ParsedPage::Node& node, unsigned) {
        std::vector<TextSpan> spans(1);
        node.GetSpans(spans);
        if (node.Keyword() != kKeywordText) {
            EXPECT_TRUE(spans.empty()) << page;
            return;
        }
        if (!line.empty()) line += ';';
        for (const TextSpan& span : spans) {
            EXPECT_GE(span.position, node.SourcePosition()) << page;
            EXPECT_LE(span.position + span.length, node.SourcePosition() + node.SourceLength()) << page;
            const std::string characters(page.substr(span.position, span.length));
            line +=
                (&span == &spans.front() ? "" : "|") + (span.verbatim ? '[' + characters + ']' : characters);
        }
    });
    return line;
}

TEST(TextSpans, HoldTheCharactersAndNothingElse) {
    struct Case {
        std::string_view html;
        const char* spans;
    };
    const Case cases[] = {
        {"<p>one &amp; two\r\n<b>three</b>"sv, "one &amp; two\r\n;three"},
        {"<p>a</x>b</p>"sv, "a|b"},
        {"<table>a<tr><td>b</td>c</table>"sv, "a|c;b"},
        {"<title>&lt;</title><xmp><b>&lt;</xmp>"sv, "&lt;;[<b>&lt;]"},
        {"<math><mi>a<![CDATA[<&]]>b"sv, "a|[<&]|b"},
        {"<pre>\na</pre>"sv, "a"},
    };
    for (const Case& c : cases) EXPECT_EQ(DumpSpans(c.html), c.spans) << c.html;
}

}  // namespace
