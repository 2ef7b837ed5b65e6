#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>
#include <zot/parser.h>

#include "zot/parsed_page.h"
#include "zot/role_dump.h"

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using namespace ZOTParser;
using Node = ParsedPage::Node;

TEST(Parser, ReportsTheRolesOfTheTableReading) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<table><thead><tr><th>a<tbody><tr><td>b<tfoot><tr><td>c",
         R"(table(head(row(header("a"))) body(row(cell("b"))) foot(row(cell("c")))))"},
        {"<table><caption>a</caption><colgroup><col></table>", R"(table(inline("a") inline(inline)))"},
        {"<pre>a</pre><listing>b</listing><xmp>c</xmp><plaintext>d",
         R"(pre("a") pre("b") pre("c") pre("d"))"},
        {"a<br>b<wbr>c<hr>", R"("a" break "b" inline "c" rule)"},
        {"<h1>a</h1><h6>b</h6>", R"(heading("a" break) heading("b" break))"},
        {"<blockquote>a</blockquote>", R"(quote("a" break))"},
        {"<ul><li>a</ul><ol></ol><menu>b</menu><dir>c</dir>",
         R"(list(item("a") break) list list("b" break) list("c" break))"},
        {"<dl><dt>a<dd>b</dl>", R"(list(definition("a") definition("b") break))"},
        {"<div>a</div><main>b</main><figure><figcaption>c</figcaption></figure>",
         R"(block("a") block("b") block(block("c")))"},
        {"<section><article><aside><nav><header><footer><hgroup><search><details><dialog>",
         "block(block(block(block(block(block(block(block(block(block)))))))))"},
        {"<address>a</address><center>b</center>", R"(address("a") address("b"))"},
        {"<form><fieldset><legend>a</legend>b</fieldset></form><details><summary>c",
         R"(form(form(legend("a") "b")) block(legend("c")))"},
        {"<b>a<i>b</i></b><span>c</span><img><label>d</label><x-y>e",
         R"(inline("a" inline("b")) inline("c") inline inline("d") inline("e"))"},
        {"<script>a</script><style>a</style><noscript>a</noscript><noframes>a</noframes><noembed>a</noembed>"
         "<template>a</template><select><option>a</select><textarea>a</textarea><datalist></datalist>"
         "<button>a</button><object>a</object><embed><iframe>a</iframe><svg></svg><audio></audio>"
         "<video></video><canvas></canvas><title>a</title><meta><link><base><input>",
         nullptr},
    };
    for (const Case& c : cases) {
        const ParsedPage page(c.html);
        if (c.body != nullptr) {
            EXPECT_EQ(Dump(page.Body()), c.body) << c.html;
            continue;
        }
        const ParsedPage inBody("<body>"s + c.html);
        for (auto node = inBody.Body().begin(); node != inBody.Body().end(); ++node) {
            EXPECT_EQ(node->Keyword(), kKeywordSkipped) << "at " << node->SourcePosition();
        }
    }
}

TEST(Parser, MarksWhatLeadsElsewhereAsLink) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<a href=x>a</a>", R"(anchor*("a"))"},
        {"<A class=y HREF='x'>a</A>", R"(anchor*("a"))"},
        {"<a href>a</a>", R"(anchor*("a"))"},
        {"<a name=x>a</a>", R"(anchor("a"))"},
        {"<a title='href=x' xhref=y>a</a>", R"(anchor("a"))"},
        {"<map><area href=x><area></map>", "inline(inline* inline)"},
        {"<p>a<link href=x>", R"(paragraph("a" skipped break))"},
        // An anchor that is opened again stays the link that it was.
        {"<a href=x>a<p>b", R"(anchor*("a" paragraph("b" break)))"},
        {"<a href=x><div>a</a>b", R"(anchor* block(anchor*("a") "b"))"},
    };
    for (const Case& c : cases) EXPECT_EQ(Dump(ParsedPage(c.html).Body()), c.body) << c.html;
}

TEST(Parser, EndsTheLineOfAParagraphThatHasContent) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<p>a<p>b", R"(paragraph("a" break) paragraph("b" break))"},
        {"<p></p><h2></h2><ul></ul><blockquote></blockquote>", "paragraph heading list quote"},
        {"<p><b></b>", "paragraph(inline break)"},
        {"<blockquote><p>a</p></blockquote>", R"(quote(paragraph("a" break) break))"},
        // What the tree construction moves afterwards: the break stays last.
        {"<p><b>a<p>b", R"(paragraph(inline("a") break) paragraph(inline("b") break))"},
        {"<b><p>a</b>b", R"(inline paragraph(inline("a") "b" break))"},
        {"<table><p>a<tr><td>b", R"(paragraph("a" break) table(body(row(cell("b")))))"},
    };
    for (const Case& c : cases) EXPECT_EQ(Dump(ParsedPage(c.html).Body()), c.body) << c.html;
    const ParsedPage page("<p>a");
    for (auto node = page.Body().begin()->Children().begin(); node != ParsedPage::Children(nullptr).end();
         ++node) {
        if (node->Keyword() != kKeywordBreak) continue;
        EXPECT_EQ(node->SourcePosition(), 0u);
        EXPECT_EQ(node->SourceLength(), 0u);
    }
}

// Every node as the piece of the page that it stands for; "." for what the page does not spell out.
std::vector<std::string> SourcePieces(const ParsedPage& page, std::string_view source) {
    std::vector<std::string> pieces;
    VisitNodes(page.Tree().Entries(), [&](const Node& node, unsigned) {
        const std::string_view piece = source.substr(node.SourcePosition(), node.SourceLength());
        pieces.push_back(piece.empty() ? "." : std::string(piece));
    });
    return pieces;
}

TEST(Parser, PlacesNodesInTheSource) {
    struct Case {
        std::string_view html;
        std::vector<std::string> pieces;
    };
    const Case cases[] = {
        {"<p class=x>a&amp;b</p>"sv, {".", ".", ".", "<p class=x>", "a&amp;b", "."}},
        {"\xEF\xBB\xBF<HTML><Body >\xC3\xA4"sv, {"<HTML>", ".", "<Body >", "\xC3\xA4"}},
        // The text before a table reaches from its first character to its last.
        {"a<table>b<tr><td>c</table>"sv, {".", ".", ".", "a<table>b", "<table>", ".", "<tr>", "<td>", "c"}},
        {"a<!-- -->b"sv, {".", ".", ".", "a", "b"}},
    };
    for (const Case& c : cases) {
        const ParsedPage page(c.html);
        EXPECT_EQ(SourcePieces(page, c.html), c.pieces) << c.html;
        EXPECT_EQ(page.Tree().SourceSize(), c.html.size());
    }
}

TEST(Parser, APageOfWhatTheParserImpliesHasNoDocument) {
    struct Case {
        std::string_view html;
        bool document;
    };
    const Case cases[] = {
        {""sv, false},
        {" \n\t"sv, false},
        {"<!-- a --><!DOCTYPE html>\n"sv, false},
        {"\xEF\xBB\xBF"sv, false},
        {"</p"sv, false},
        {"a"sv, true},
        {"<br>"sv, true},
        {"<title></title>"sv, true},
    };
    for (const Case& c : cases) {
        const ParsedPage page(c.html);
        EXPECT_EQ(page.Parsed(), c.document) << c.html;
        EXPECT_EQ(page.Tree().HasDocument(), c.document) << c.html;
        EXPECT_EQ(page.Tree().Entries().begin() != page.Tree().Entries().end(), c.document) << c.html;
    }
}

// A browser shows nothing of them.
TEST(Parser, ReadsPagesWhoseTitleNeverEnds) {
    struct Case {
        std::string_view html;
        std::u16string_view text;
    };
    const Case cases[] = {
        {"<title>a - b < <script>b</script></head><body>c</body>"sv, u"c"},
        {"<TITLE>a</titlepage></head><BODY>b<p>c</BODY></html>"sv, u"b\nc"},
        {"<title><p>a<title>b<p>c</body>"sv, u"a\nc"},
        // Without a body that ends, and where the title ends after all, it is as the standard says.
        {"<title>a<body>b</bodyguard>"sv, u""},
        {"<title>a</body></title>b"sv, u"b"},
        {"<textarea>a</body>"sv, u""},
    };
    for (const Case& c : cases) EXPECT_EQ(ParsedPage(c.html).DocumentText(), c.text) << c.html;
}

TEST(Parser, GivesTheCharactersOfATextWhenAsked) {
    struct Case {
        std::string_view html;
        std::u16string_view text;
    };
    const Case cases[] = {
        {"<p>a &lt;b&gt; &eacute;\r\nc"sv, u"a <b> \u00E9\nc"sv},
        {"<p>a\0b\xFF"sv, u"ab\uFFFD"sv},
        {"<p>\xF0\x9F\x98\x80"sv, u"\U0001F600"sv},
        // Moved in front of the table, two texts become one; a reference does not reach over the gap.
        {"<table>&am<tr>p;c</table>"sv, u"&amp;c"sv},
        {"<body><svg><![CDATA[a&amp;b]]>&amp;\0"sv, u"a&amp;b&\uFFFD"sv},
        {"<pre>\n\na"sv, u"\na"sv},
    };
    for (const Case& c : cases) {
        const ParsedPage page(c.html);
        std::u16string text = u"none";
        VisitNodes(page.Body(), [&](const Node& node, unsigned) {
            if (node.Keyword() == kKeywordText) node.GetText(text);
        });
        EXPECT_EQ(text, c.text) << c.html;
    }
    std::u16string text = u"old";
    ParsedPage("<p>a").Body().begin()->GetText(text);
    EXPECT_EQ(text, u"") << "of an element";
}

TEST(Parser, GivesAttributesByName) {
    const ParsedPage page(
        "<body a=1><p Colspan=' 2&amp;3 ' rowspan=\"4\" ROWSPAN=5 title x=&#x20AC;>text<body a=2 b=3>");
    const auto value = [](const Node& node, const char* name) {
        std::string result = "old";
        node.GetParam(name, result);
        return result;
    };
    const auto p = page.Body().begin();
    EXPECT_EQ(value(*p.operator->(), "colspan"), " 2&3 ");
    EXPECT_EQ(value(*p.operator->(), "rowspan"), "4") << "the first one counts";
    EXPECT_EQ(value(*p.operator->(), "title"), "");
    EXPECT_EQ(value(*p.operator->(), "x"), "\u20AC");
    EXPECT_EQ(value(*p.operator->(), "none"), "");
    EXPECT_EQ(value(*p->Children().begin().operator->(), "colspan"), "") << "of a text";

    auto body = page.Tree().Entries().begin()->Children().begin();
    ++body;
    EXPECT_EQ(value(*body.operator->(), "a"), "1");
    EXPECT_EQ(value(*body.operator->(), "b"), "3") << "of a later tag of the same element";
}

TEST(Parser, AnEntryKeepsTheTreeAlive) {
    ZOT::RefCount<Node> held;
    {
        const ParsedPage page("<p>kept");
        held = *page.Body().begin();
    }
    EXPECT_EQ(Dump(held->Children()), R"("kept" break)");
}

TEST(Parser, FindsTheCharacterSetOut) {
    struct Case {
        std::string_view bytes;
        ZOT::CHARSET charset;
    };
    const Case cases[] = {
        {"\xEF\xBB\xBF<p>\xC3\xA4"sv, ZOT::kCharsetUtf8},
        {"\xFF\xFE<\0p\0>\0\xE4\0"sv, ZOT::kCharsetUtf16Le},
        {"\xFE\xFF\0<\0p\0>\0\xE4"sv, ZOT::kCharsetUtf16Be},
        {"<meta charset=windows-1252><p>\xE4"sv, ZOT::kCharsetWindows1252},
        {"<meta http-equiv=content-type content='text/html; charset=utf-8'><p>\xC3\xA4"sv, ZOT::kCharsetUtf8},
        // The mark is stronger than the declaration.
        {"\xEF\xBB\xBF<meta charset=windows-1252><p>\xC3\xA4"sv, ZOT::kCharsetUtf8},
        {"<p>\xC3\xA4"sv, ZOT::kCharsetUtf8},
    };
    for (const Case& c : cases) {
        const ParsedPage page(c.bytes, ZOT::kCharsetNone);
        EXPECT_EQ(page.Tree().Charset(), c.charset) << c.bytes;
        EXPECT_EQ(page.DocumentText(), u"\u00E4") << c.bytes;
    }
    EXPECT_EQ(ParsedPage("<meta charset=utf-8><p>\xE4", ZOT::kCharsetWindows1252).DocumentText(), u"\u00E4")
        << "the character set given is not argued with";
}

TEST(Parser, KnowsTheSpaceBetweenTags) {
    struct Case {
        std::string_view html;
        std::string_view texts;  // a blank for one that is space, else an x
    };
    const Case cases[] = {
        {"<p> <b>a</b>\n\t<i> b</i>", " x x"},
        {"<p>&#32;<p>&nbsp;", "xx"},
        // In several places of the source.
        {"<p>a</p> </body> </html> ", "x "},
        {"<p>a</p> </body>b", "xx"},
        {"<div> </body>b", "x"},
    };
    for (const Case& c : cases) {
        std::string texts;
        const ParsedPage page(c.html);
        VisitNodes(page.Tree().Entries(), [&](const ParsedPage::Node& node, unsigned) {
            if (node.Keyword() == ZOTParser::kKeywordText) texts += node.IsSpace() ? ' ' : 'x';
        });
        EXPECT_EQ(texts, c.texts) << c.html;
    }
}

TEST(DocumentText, PutsBlocksOnLinesOfTheirOwn) {
    struct Case {
        std::string_view html;
        std::u16string_view text;
    };
    const Case cases[] = {
        {""sv, u""sv},
        {"  a  \n b "sv, u"a b"sv},
        {"<title>t</title><p>a</p>\n\n<p> b </p><div>c<div>d</div>e</div>"sv, u"a\nb\nc\nd\ne"sv},
        {"a<br>b<br><br>c<hr>d"sv, u"a\nb\nc\nd"sv},
        {"<ul><li>a<li> <li>b</ul>"sv, u"a\nb"sv},
        {"<table><caption>a</caption>x<tr><td>b<td>c</table>d"sv, u"x\na\nb\nc\nd"sv},
        // A run of white space is one blank, over the bounds of inline elements, too.
        {"<p>a <b> b</b> <a href=x> c</a>d"sv, u"a b cd"sv},
        {"<p>a&nbsp;&nbsp;b&#x2028;c &#x2029; d"sv, u"a b\nc\nd"sv},
        {"<p>a&shy;b&#x200B;c \xEF\xBB\xBF d&#7;"sv, u"abc d"sv},
        {"<pre>a\n  b</pre>"sv, u"a b"sv},
        {"<p>a<script>x</script>b<select><option>x</select> <svg><text>x</text></svg>c"sv, u"ab c"sv},
        {"<p>\xE4\xBD\xA0 \xF0\x9F\x98\x80 \xD0\xB0"sv, u"\u4F60 \U0001F600 \u0430"sv},
    };
    for (const Case& c : cases) EXPECT_EQ(ParsedPage(c.html).DocumentText(), c.text) << c.html;
    const ParsedPage code("<pre>a<b>b</b><a><i>c</i></a><div>d<i>e</i></div></pre>f",
                          HtmlKeywordTable::kBlockReading);
    EXPECT_EQ(code.DocumentText(), u"abc\nde\nf") << "inline elements have the role of the block there";

    std::u16string text = u"old";
    ParsedPage("<p>a").Tree().GetText(text, static_cast<HtmlKeywordTable::NodeAtt>(255));
    EXPECT_EQ(text, u"") << "no such text";
}

std::string Repeated(std::string_view piece, unsigned count) {
    std::string text;
    for (unsigned i = 0; i < count; ++i) text += piece;
    return text;
}

// Pages that are written to make a parser blow up: the tree stays in proportion to the page, and flat.
TEST(Parser, HostilePagesStayBounded) {
    constexpr unsigned kDepth = 512;
    constexpr unsigned kCount = 20000;
    struct Case {
        const char* what;
        std::string html;
    };
    const Case cases[] = {
        {"open elements", Repeated("<div>", kCount) + "x"},
        {"open and closed elements", Repeated("<div>", kCount) + "x" + Repeated("</div>", kCount) + "<p>y"},
        {"inline elements", Repeated("<span>", kCount) + "x"},
        {"open tables", Repeated("<table><tr><td>", kCount) + "x"},
        {"foster parents", "<table>" + Repeated("<table>a", kCount)},
        {"formatting that is opened again", Repeated("<b id=x><i><u><p>", kCount)},
        {"different formatting",
         [] {
             std::string html;
             for (unsigned i = 0; i < kCount / 10; ++i) html += "<b a" + std::to_string(i) + "><p>";
             return html;
         }()},
        {"adoptions", Repeated("<a><p>", kCount) + Repeated("</a>", kCount)},
        {"adoptions of deep blocks", Repeated("<b><div>", kCount) + Repeated("</b>", kCount)},
        {"templates", Repeated("<template>", kCount) + "x"},
        {"foreign elements", Repeated("<svg><foreignObject>", kCount) + "x"},
        {"framesets", Repeated("<frameset>", kCount)},
        {"selects", Repeated("<select><option>", kCount)},
        {"copies of an option",
         "<select><option>" + Repeated("<br>", kCount / 10) + "</option>" +
             Repeated("<selectedcontent></selectedcontent><object><select><selectedcontent>"
                      "</selectedcontent></select></object>",
                      kCount / 10)},
        {"copies of copies", Repeated("<select><selectedcontent></selectedcontent><option><object>", 100) +
                                 Repeated("<br>", kCount)},
        {"nested paragraphs", Repeated("<p><button>", kCount)},
        {"merged bodies", Repeated("<body a=1>", kCount) + "<table>" + Repeated("<tr><td>x", kCount)},
        {"an open comment", "<!--" + Repeated("-->x<!--", kCount)},
        {"an open tag", "<a" + Repeated(" b=c", kCount)},
        {"end tags of nothing", Repeated("</p></br></b></x>", kCount)},
        {"marks", Repeated("<", kCount) + Repeated("&", kCount) + Repeated("&#", kCount)},
    };
    for (const Case& c : cases) {
        const ParsedPage page(c.html);
        std::size_t nodes = 0;
        unsigned deepest = 0;
        VisitNodes(page.Tree().Entries(), [&](const Node& node, unsigned depth) {
            ++nodes;
            deepest = std::max(deepest, depth);
            EXPECT_LE(std::size_t{node.SourcePosition()} + node.SourceLength(), c.html.size()) << c.what;
        });
        EXPECT_LE(nodes, c.html.size() + 8) << c.what;
        EXPECT_LE(deepest, kDepth + 2) << c.what << ": elements, and a text or a break in the last one";
    }
}

TEST(Parser, WhatLiesTooDeepBecomesASibling) {
    const ParsedPage page(Repeated("<div>", 600) + "<p>x</p><p>y");
    unsigned divisions = 0;
    unsigned deepest = 0;
    VisitNodes(page.Tree().Entries(), [&](const Node& node, unsigned depth) {
        if (node.Keyword() == kKeywordBlock) ++divisions;
        if (node.Keyword() != kKeywordText && node.Keyword() != kKeywordBreak)
            deepest = std::max(deepest, depth);
    });
    EXPECT_EQ(divisions, 600u) << "none is lost";
    EXPECT_EQ(deepest, 512u);
    EXPECT_EQ(page.DocumentText(), u"x\ny");
}

}  // namespace
