#include <gtest/gtest.h>

#include <string>
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
        {"<section><article><main>a", R"(table(row(cell(table(row(cell(table(row(cell("a"))))))))))"},
        {"<div></div>", "table(row(cell))"},
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
        {"<nav>a</nav><aside>b</aside><footer>c</footer>", R"(clutter("a") clutter("b") clutter("c"))"},
        {"<div hidden>a</div><p HIDDEN=''>b</p><span hidden>c</span>",
         R"(skipped("a") skipped("b" break) skipped("c"))"},
        {"<div aria-hidden=TRUE>a</div><i aria-hidden=false>b</i>", R"(skipped("a") inline("b"))"},
        {"<i style='color:red;display : none'>a</i><i style=VISIBILITY:hidden>b</i><i "
         "style=display:block>c</i>",
         R"(skipped("a") skipped("b") inline("c"))"},
        {"<ul role=navigation><li>a</ul><p role=search>b</p><p role=note>c",
         R"(clutter(item("a") break) clutter("b" break) paragraph("c" break))"},
        {"<p role=banner style='display:none'>a", R"(skipped("a" break))"},
        {"<p data-hidden class=hidden title=hidden>a", R"(paragraph("a" break))"},
    };
    for (const Case& c : cases) EXPECT_EQ(Blocks(c.html), c.body) << c.html;
}

TEST(BlockReading, KeepsClutterInTheDocumentText) {
    const ParsedPage page("<nav>a</nav><div>b<p hidden>c</p></div><footer>d",
                          HtmlKeywordTable::kBlockReading);
    EXPECT_EQ(page.DocumentText(), u"a\nb\nd");
}

}  // namespace
