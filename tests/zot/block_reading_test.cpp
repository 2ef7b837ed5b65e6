#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <zot/parser.h>

#include "zot/role_dump.h"

namespace {

using ZOTParser::HtmlKeywordTable;

std::string Blocks(const char* page) {
    return Dump(ParsedPage(page, HtmlKeywordTable::kBlockReading).Body());
}

TEST(BlockReading, MakesLayoutBlocksTablesOfOneCell) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<div>a</div>b", R"(table(row(cell("a"))) "b")"},
        // Of blocks that show the same text, the innermost is the table.
        {"<section><article><main>a", R"(block(block(table(row(cell("a"))))))"},
        {"<div><p hidden>a</p><div>b</div><div></div></div>",
         R"(block(skipped("a" break) table(row(cell("b"))) block))"},
        {"<div>a<div>b</div></div><div><ul><li><div>c",
         R"(table(row(cell("a" break table(row(cell("b")))))) table(row(cell(list(item(table(row(cell("c")))) break)))))"},
        // Without text there is nothing to lay out.
        {"<div></div><div> <section><img></section></div>a", R"(block block(" " block(inline)) "a")"},
        // What is no layout stays what it is.
        {"<p>a<ul><li>b</ul><details><summary>c",
         R"(paragraph("a" break) list(item("b") break) block(legend("c")))"},
        {"<div><table><tr><td><div>a", R"(table(row(cell(table(body(row(cell(table(row(cell("a")))))))))))"},
        {"<svg><div>a</div></svg>", R"(skipped table(row(cell("a"))))"},
    };
    for (const Case& c : cases) EXPECT_EQ(Blocks(c.html), c.body) << c.html;
}

TEST(BlockReading, LeavesOutWhatIsNotShownOrNoContentByItsOwnAccount) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<nav>a</nav><aside>b</aside><footer>c</footer>d", R"(clutter("a") clutter("b") clutter("c") "d")"},
        {"<div hidden>a</div><p HIDDEN=''>b</p><span hidden>c</span>d",
         R"(skipped("a") skipped("b" break) skipped("c") "d")"},
        {"<div aria-hidden=TRUE>a</div><i aria-hidden=false>b</i><a aria-hidden=true>c</a>",
         R"(skipped("a") inline("b") anchor("c"))"},
        {"<i style='color:red;display : none'>a</i><i style=VISIBILITY:hidden>b</i><i "
         "style=display:block>c</i>",
         R"(skipped("a") skipped("b") inline("c"))"},
        {"<ul role=navigation><li>a</ul><p role=search>b</p><p role=note>c",
         R"(clutter(item("a") break) clutter("b" break) paragraph("c" break))"},
        {"<p role=tooltip>a<p role=alert>b</p>c", R"(clutter("a" break) clutter("b" break) "c")"},
        {"<p role=banner style='display:none'>a</p>b", R"(skipped("a" break) "b")"},
        {"<p data-hidden class=hidden title=hidden>a", R"(paragraph("a" break))"},
        // A link is read whatever its role.
        {"<a hidden href=x>a</a><a role=navigation href=x>b</a>c", R"(skipped("a") clutter("b") "c")"},
        {"<nav>a<i hidden>b</i><nav>c</nav></nav>d", R"(clutter("a" skipped("b") clutter("c")) "d")"},
    };
    for (const Case& c : cases) EXPECT_EQ(Blocks(c.html), c.body) << c.html;
}

// Long enough that a page which holds it is no page of cards.
const std::string kProse = [] {
    std::string prose;
    while (prose.size() < 400) prose += "A sentence that has a few words and ends. ";
    return prose;
}();

// Longer, and no prose.
const std::string kList = [] {
    std::string list;
    while (list.size() < 800) list += "a word, ";
    return list;
}();

// The roles with "PROSE" and "LIST" in the places of these.
std::string BlocksBesideProse(std::string page) {
    const auto replace = [](std::string& text, std::string_view from, std::string_view to) {
        for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
            text.replace(at, from.size(), to);
    };
    replace(page, "PROSE", kProse);
    replace(page, "LIST", kList);
    std::string roles = Blocks(page.c_str());
    replace(roles, '"' + kProse + '"', "PROSE");
    replace(roles, '"' + kList + '"', "LIST");
    return roles;
}

TEST(BlockReading, ReadsTheOneMainElementAlone) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<div>a</div><div><main>PROSE</main><p>b</div><ul><li>c</ul>",
         R"(clutter("a") table(row(cell(table(row(cell(PROSE))) clutter("b" break)))) clutter(item("c") break))"},
        {"<a href=x>a</a><main>PROSE</main>", R"(clutter("a") table(row(cell(PROSE))))"},
        {"<p>a<div role=main>PROSE</div>", R"(clutter("a" break) table(row(cell(PROSE))))"},
        // One inside the other is still one; beside each other they are two.
        {"<p>a<main><div role=main>PROSE", R"(clutter("a" break) block(table(row(cell(PROSE)))))"},
        {"<p>a<main>PROSE</main><main>PROSE",
         R"(paragraph("a" break) table(row(cell(PROSE))) table(row(cell(PROSE))))"},
        // It holds next to nothing.
        {"<p>PROSE<main>a", R"(paragraph(PROSE break) table(row(cell("a"))))"},
        // What stands around the content ends before the main element, even where its end tag is missing.
        {"<p>a<aside>b<main>PROSE</main>",
         R"(clutter("a" break) table(row(cell("b" break table(row(cell(PROSE)))))))"},
        {"<main>PROSE</main><div role=dialog>b<main>a</main></div>",
         R"(table(row(cell(PROSE))) clutter("b" block("a")))"},
        {"<div hidden>b<main>a</main></div>PROSE", R"(skipped("b" block("a")) PROSE)"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

TEST(BlockReading, LeavesOutFormsBesideProse) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<form>a</form><p>PROSE", R"(clutter("a") paragraph(PROSE break))"},
        {"<form>PROSE</form><p>PROSE<p>PROSE",
         R"(clutter(PROSE) paragraph(PROSE break) paragraph(PROSE break))"},
        {"<form>PROSE</form><p>PROSE", R"(form(PROSE) paragraph(PROSE break))"},
        {"<form>PROSE<br>PROSE<br>PROSE</form><p>PROSE<br>PROSE<br>PROSE<p>PROSE<br>PROSE",
         R"(form(PROSE break PROSE break PROSE) paragraph(PROSE break PROSE break PROSE break) paragraph(PROSE break PROSE break))"},
        {"<form hidden>a</form>PROSE", R"(skipped("a") PROSE)"},
        {"<form><main>a</main></form><p>PROSE", R"(form(table(row(cell("a")))) paragraph(PROSE break))"},
        // All that the page has.
        {"<form>a</form>b", R"(form("a") "b")"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

TEST(BlockReading, LeavesOutWhatIsNamedAsClutter) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<div class=related>a</div>PROSE", R"(clutter("a") PROSE)"},
        {"<div class='x y-related_z'>a</div><ul id=siteSidebar><li>b</ul><form class=SIGNUP>c</form>PROSE",
         R"(clutter("a") clutter(item("b") break) clutter("c") PROSE)"},
        {"<section class=recommended>a</section><section class=recommendations>b</section>PROSE",
         R"(clutter("a") clutter("b") PROSE)"},
        // A menu is one of links, or of dishes.
        {"<div class=menu><a href=x>a</a>b</div><div class=mainMenu>c</div>PROSE",
         R"(clutter(anchor*("a") "b") table(row(cell("c"))) PROSE)"},
        // Comments are none of an article of today, and what there is to read in a forum.
        {"<main><p>PROSE<p>PROSE<div id=comments>PROSE</div></main>",
         R"(table(row(cell(paragraph(PROSE break) paragraph(PROSE break) clutter(PROSE)))))"},
        {"<div><p>PROSE<p>PROSE<div id=comments>a</div></div>",
         R"(table(row(cell(paragraph(PROSE break) paragraph(PROSE break) table(row(cell("a")))))))"},
        {"<main><p>PROSE<div id=comments><ul><li>PROSE<li>PROSE</ul></div></main>",
         R"(table(row(cell(paragraph(PROSE break) table(row(cell(list(item(PROSE) item(PROSE) break))))))))"},
        {"<div class='menu comments sidebar'>a</div>PROSE", R"(clutter("a") PROSE)"},
        // Within a word, of another block, in another attribute, or what a name says nothing about.
        {"<div class=unrelated>a</div>PROSE", R"(table(row(cell("a"))) PROSE)"},
        {"<div class='has-sidebar page'>a</div><div id=WithSidebar>b</div>PROSE",
         R"(table(row(cell("a"))) table(row(cell("b"))) PROSE)"},
        {"<div class='no-cookies sidebar'>a</div>PROSE", R"(clutter("a") PROSE)"},
        {"<div title=related>a</div><p class=related>b</p><b class=related>c</b>PROSE",
         R"(table(row(cell("a"))) paragraph("b" break) inline("c") PROSE)"},
        // Most of the page, most of its prose, or around the main element.
        {"<div class=related>abc</div>b", R"(clutter("abc") "b")"},
        {"<div class=related>abcd</div>b", R"(table(row(cell("abcd"))) "b")"},
        {"<div class=reviews>PROSE<br>PROSE</div><p>PROSE",
         R"(clutter(PROSE break PROSE) paragraph(PROSE break))"},
        {"<p>PROSE<div class=reviews>PROSE<br>PROSE<br>PROSE<br>PROSE<br>PROSE</div>",
         R"(paragraph(PROSE break) table(row(cell(PROSE break PROSE break PROSE break PROSE break PROSE))))"},
        {"<div class=sidebar><main>a</main></div><div>PROSE</div>",
         R"(block(table(row(cell("a")))) table(row(cell(PROSE))))"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

TEST(BlockReading, LeavesOutWhatFollowsTheMainText) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<div><p>PROSE</div><div>a</div><ul><li>b</ul><h2>c</h2>",
         R"(table(row(cell(paragraph(PROSE break)))) clutter("a") clutter(item("b") break) clutter("c" break))"},
        {"<table><tr><td>PROSE<td>a</table>", R"(table(body(row(cell(PROSE) clutter("a")))))"},
        // At each level on the way in.
        {"<div><div>PROSE</div><div>a</div></div><div>b</div>",
         R"(table(row(cell(table(row(cell(PROSE))) clutter("a")))) clutter("b"))"},
        // What precedes it, paragraphs, as much prose in one place, and more text of another kind.
        {"<h1>a</h1><div>b</div><div>PROSE</div>c<p>d",
         R"(heading("a" break) table(row(cell("b"))) table(row(cell(PROSE))) "c" paragraph("d" break))"},
        {"<div>PROSE</div><div>PROSE</div>", R"(table(row(cell(PROSE))) table(row(cell(PROSE))))"},
        {"<div>PROSE</div><div>LIST</div>", R"(table(row(cell(PROSE))) table(row(cell(LIST))))"},
        // The prose of many teasers is worth less than that of one article.
        {"<div>PROSE<p>PROSE</div><div><div>PROSE</div><a href=x>b</a></div><div>PROSE</div>",
         R"(table(row(cell(PROSE paragraph(PROSE break)))) clutter(block(PROSE) anchor*("b")) clutter(PROSE))"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

// What stands around nothing is what the page has to say.
TEST(BlockReading, ReadsClutterWhereThereIsNothingElse) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<nav>a</nav><footer>b", R"(table(row(cell("a"))) table(row(cell("b"))))"},
        {"<main></main><footer>a", R"(block table(row(cell("a"))))"},
        {"<div class=footer>a</div><div class=sidebar>b</div><nav>c</nav>",
         R"(table(row(cell("a"))) table(row(cell("b"))) clutter("c"))"},
        {"<p>PROSE<p>PROSE<main><div class=sidebar>PROSE</div></main>",
         R"(clutter(PROSE break) clutter(PROSE break) block(table(row(cell(PROSE)))))"},
        {"<p>PROSE<p>PROSE<main><form>PROSE</form></main>",
         R"(clutter(PROSE break) clutter(PROSE break) table(row(cell(form(PROSE)))))"},
        // The main element, which is read alone, follows what would else be the main text.
        {"<div><p>PROSE<p>PROSE</div><main>LIST</main>",
         R"(clutter(paragraph(PROSE break) paragraph(PROSE break)) table(row(cell(LIST))))"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

TEST(BlockReading, ReadsAStoryTogetherWithItsSections) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<div><p>PROSE<div>PROSE</div></div>", R"(table(row(cell(paragraph(PROSE break) block(PROSE)))))"},
        {"<div><p>PROSE<div>PROSE<section>PROSE</section></div></div>",
         R"(table(row(cell(paragraph(PROSE break) table(row(cell(PROSE break table(row(cell(PROSE))))))))))"},
        {"<div><p>PROSE<p>PROSE<div>PROSE<section>PROSE</section></div></div>",
         R"(table(row(cell(paragraph(PROSE break) paragraph(PROSE break) block(PROSE block(PROSE))))))"},
        // Code has no sentences.
        {"<div><p>PROSE<div>b<div><pre>a</pre></div></div></div>",
         R"(table(row(cell(paragraph(PROSE break) block("b" block(pre(break "a" break)))))))"},
        // Without prose, of links, or beside the story.
        {"<div><p>PROSE<div>a</div></div>",
         R"(table(row(cell(paragraph(PROSE break) table(row(cell("a")))))))"},
        {"<div><p>PROSE<p>PROSE<div>a<a href=x>PROSE</a></div></div>",
         R"(table(row(cell(paragraph(PROSE break) paragraph(PROSE break) table(row(cell("a" anchor*(PROSE))))))))"},
        {"<div>PROSE</div><div><p>PROSE<p>PROSE</div>",
         R"(table(row(cell(PROSE))) table(row(cell(paragraph(PROSE break) paragraph(PROSE break)))))"},
        // Within what is no part of it nothing is.
        {"<div><p>PROSE<p>PROSE<div><ul><li>PROSE<li>PROSE</ul><div>PROSE</div></div></div>",
         R"(table(row(cell(paragraph(PROSE break) paragraph(PROSE break) table(row(cell(list(item(PROSE) item(PROSE) break) table(row(cell(PROSE))))))))))"},
        // Layout tables too, and what is laid out in them, but for those that lead elsewhere.
        {"<div>PROSE<table><tr><td>a word<table><tr><td><a href=x>b</a></table></table></div>",
         R"(table(row(cell(PROSE block(block(block(block("a word" break table(body(row(cell(anchor*("b")))))))))))))"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

TEST(BlockReading, ReadsAListInTheMainElementAsOne) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<p>a<main><div><a href=x>b</a></div><div>c</div></main>",
         R"(clutter("a" break) table(row(cell(block(anchor("b")) block("c")))))"},
        {"<main><table><tr><td><div>a</div><td>b</table></main>",
         R"(table(row(cell(block(block(block(block(block("a")) block("b"))))))))"},
        {"<main><table><tr><td>a<td>b<tr><td>c<td>d</table></main>",
         R"(table(row(cell(block(inline(legend(inline("a") " " inline("b")) legend(inline("c") " " inline("d"))))))))"},
        // Links alone, and a story.
        {"<main><div><a href=x>b</a></div></main>", R"(block(table(row(cell(anchor*("b"))))))"},
        {"<main><p>PROSE<div>a</div></main>",
         R"(table(row(cell(paragraph(PROSE break) table(row(cell("a")))))))"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

TEST(BlockReading, OpensAPageThatWaitsForAScript) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<p>Loading<div hidden>PROSE</div>", R"(paragraph("Loading" break) table(row(cell(PROSE))))"},
        {"<body><noscript><p>PROSE</p></noscript>Loading", R"(block(paragraph(PROSE break)) "Loading")"},
        {"<p>PROSE<div hidden>PROSE</div><noscript>a</noscript>",
         R"(paragraph(PROSE break) skipped(PROSE) skipped("a"))"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

TEST(BlockReading, TakesCardsForContentWhereThereIsNoProse) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"<a href=x>name</a><h2><a href=x>b</a></h2><a href=x><h3>c</h3></a><a href=x>d<div>e</div></a>f",
         R"(anchor*("name") heading(anchor("b") break) anchor(heading("c" break)) anchor("d" break table(row(cell("e")))) "f")"},
        {"<a href=x>a teaser<br>is a card by its length alone, be there ever so few things inside it that "
         "say so, "
         "and no matter what follows</a>but all is not a link",
         "anchor(\"a teaser\" break \"is a card by its length alone, be there ever so few things inside it "
         "that say "
         "so, and no matter what follows\") \"but all is not a link\""},
        // Links alone: the page is a page of links.
        {"<h2><a href=x>b</a></h2><a href=x><h3>c</h3></a>",
         R"(heading(anchor*("b") break) anchor*(heading("c" break)))"},
        {"<p>PROSE<h2><a href=x>b</a></h2><a href=x><h3>c</h3></a>",
         R"(paragraph(PROSE break) heading(anchor*("b") break) anchor*(heading("c" break)))"},
    };
    for (const Case& c : cases) EXPECT_EQ(BlocksBesideProse(c.html), c.body) << c.html;
}

// The texts on both sides would run together where the table is not chosen.
TEST(BlockReading, EndsTheLineThatATableOrClutterCuts) {
    struct Case {
        const char* html;
        const char* body;
    };
    const Case cases[] = {
        {"a<div>b</div>c", R"("a" break table(row(cell("b"))) "c")"},
        {"a<nav>b</nav>c", R"("a" break clutter("b") "c")"},
        {"a<table><caption>b<tr><td>1<td>2<tr><td>3<td>4</table>",
         R"("a" block(inline("b") inline(break legend(inline("1") " " inline("2")) legend(inline("3") " " inline("4")))))"},
        // Back to the text over what shows nothing, into and out of elements within the line.
        {"<b><i>a</i></b> <script></script><i></i><b><i><div>b</div></i></b>",
         R"(inline(inline("a")) " " skipped inline inline(inline(break table(row(cell("b"))))))"},
        // The line is at its end, or at its start.
        {"<p>a</p><div>b</div>", R"(paragraph("a" break) table(row(cell("b"))))"},
        {"a<br><div>b</div>", R"("a" break table(row(cell("b"))))"},
        {"a<hr><b><div>b</div></b>", R"("a" rule inline(table(row(cell("b")))))"},
        {"<div>a</div> <div><div>b</div></div>", R"(table(row(cell("a"))) " " block(table(row(cell("b")))))"},
        {"<ul><li><div>a</div></ul>", R"(list(item(table(row(cell("a")))) break))"},
    };
    for (const Case& c : cases) EXPECT_EQ(Blocks(c.html), c.body) << c.html;
}

TEST(BlockReading, KeepsClutterInTheDocumentText) {
    const ParsedPage page("<nav>a</nav><div>b<p hidden>c</p></div><footer>d",
                          HtmlKeywordTable::kBlockReading);
    EXPECT_EQ(page.DocumentText(), u"a\nb\nd");
}

}  // namespace
