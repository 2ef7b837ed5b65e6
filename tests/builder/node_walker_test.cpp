#include "node_walker.h"

#include <gtest/gtest.h>

#include <string>

#include "page.h"

namespace QuillNS {
namespace {

struct Case {
    const char* html;
    const char* dump;
};

template <std::size_t size>
void ExpectBodies(const Case (&cases)[size]) {
    for (const Case& c : cases) EXPECT_EQ(DumpBody(c.html), c.dump) << c.html;
}

TEST(NodeWalker, BreaksLinesAroundElements) {
    const Case cases[] = {
        {"one<b>two</b> <i>three", "'one' 'two ' 'three'"},
        {"one<br>two", "'one/' 'two'"},
        {"one<br><br><br>two", "'one//' 'two'"},
        {"<br>one", "'one'"},
        {"<p>one<p>two", "'one//' 'two/'"},
        {"one<p>two</p>three", "'one//' 'two/' 'three'"},
        {"<h1>one</h1><div>two</div>three", "'one//' 'two/' 'three'"},
        {"<div><div>one</div></div><div>two", "'one//' 'two/'"},
        {"<ul><li>one<li>two</ul>three", "'one//' 'two//' 'three'"},
        {"one<h2>two</h2>three", "'one//' 'two/' 'three'"},
        {"one<ul><li>two</ul>three", "'one//' 'two//' 'three'"},
        {"<dl><dt>one<dd>two</dl>three", "'one//' 'two//' 'three'"},
        {"one<blockquote>two</blockquote>three", "'one//' 'two/' 'three'"},
        {"one<address>two</address>three", "'one/' 'two/' 'three'"},
        {"one<center>two</center>three", "'one/' 'two/' 'three'"},
        {"one<form>two</form>three", "'one/' 'two/' 'three'"},
        {"one<hr>two", "'one/' 'two'"},
        {"<fieldset><legend>one</legend>two</fieldset>three", "'one/' 'two/' 'three'"},
        {"one<summary>two</summary>three", "'one' 'two/' 'three'"},
        // An element without children breaks the line before it alone.
        {"one<div></div>two", "'one/' 'two'"},
        {"one<hr>", "'one/'"},
    };
    ExpectBodies(cases);
}

TEST(NodeWalker, SkipsWhatIsNotRead) {
    const Case cases[] = {
        {"one<script>x</script><style>x</style><!-- x "
         "--><select><option>x</select><svg><text>x</text></svg>two",
         "'one' 'two'"},
        {"<title>x</title>one<textarea>x</textarea><button>x</button>", "'one'"},
        {"<script>x</script>", ""},
        {" ", "none"},
        {"", "none"},
    };
    ExpectBodies(cases);
}

TEST(NodeWalker, PreformattedTextReachesTextsAndLinksOfTheBlockAlone) {
    const Case cases[] = {
        {"<pre>a  b\n  c</pre>", "'a  b/  c'"},
        {"<pre> a<a href=x>  b  </a>  c</pre>", "' a' '  b  ' '  c'"},
        {"<pre>a <b>  b  c </b>  d</pre>", "'a ' ' b c ' '  d'"},
        {"<pre>a <b><a href=x>  b  c</a></b></pre>", "'a ' ' b c'"},
        {"<pre>a</pre>  b", "'a' ' b'"},
    };
    ExpectBodies(cases);
}

TEST(NodeWalker, HangsTablesIntoTheirCells) {
    const Case cases[] = {
        {"<table><tr><td>A<td>B</table>", "{('A/') ('B//')}"},
        {"one<table><tr><td>A</table>two", "'one' {('A//')} 'two'"},
        {"<table><tr><td>A<td>B<tr><td>C</table>", "{('A/') ('B//') ; ('C//') .}"},
        // The row breaks the line of the last cell that was filled.
        {"<table><tr><td>A<td></td></table>", "{('A//') .}"},
        {"<table><tr><td>A<td> </td></table>", "{('A//') ()}"},
        {"<table><tr><td>A<tr><td></table>", "{('A//') ; .}"},
        {"<table><tr><td><b></b>", "{()}"},
        // Spans leave their other slots empty.
        {"<table><tr><td rowspan=2>A<td>B<tr><td>C</table>", "{('A/') ('B//') ; . ('C//')}"},
        // A cell that ends in a table gets no line feed.
        {"<table><tr><td>A<table><tr><td>B</table></table>", "{('A' {('B//')})}"},
        {"<table><tr><td><table><tr><td>B</table>C</table>", "{({('B//')} 'C//')}"},
        // Only what stands in cells is read, and nothing of a table without any.
        {"<table><caption>X</caption><tr><td>A</table>", "{('A//')}"},
        {"one<table><caption>X</caption></table>two", "'one' 'two'"},
        {"one<table><tr></table>two", "'one' 'two'"},
        {"one<table></table>two", "'one' 'two'"},
        // The last foot group comes last; earlier ones are not read.
        {"<table><tfoot><tr><td>F<tbody><tr><td>A</table>", "{('A//') ; ('F//')}"},
        {"<table><tfoot><tr><td>X<tfoot><tr><td>F<tbody><tr><td>A</table>", "{('A//') ; ('F//') ; .}"},
        {"<pre><table><tr><td>a  b</table></pre>", "{('a b//')}"},
    };
    ExpectBodies(cases);
}

// Words, of these in links, links, nested tables.
std::string Counts(const KCell& cell) {
    EXPECT_EQ(cell.Images(), 0u);
    return std::to_string(cell.Words()) + " " + std::to_string(cell.WordsInLinksAndImages()) + " " +
           std::to_string(cell.Links()) + " " + std::to_string(cell.Tables());
}

TEST(NodeWalker, CountsWordsLinksAndTables) {
    const Case cases[] = {
        {"one two", "2 0 0 0"},
        {"<a href=x>one two</a>three", "3 2 1 0"},
        {"<a href=x>one</a><a name=y>two</a>", "2 1 1 0"},
        {"<a href=x><b>one</b></a>", "1 1 1 0"},
        // An anchor inside an anchor is no further link; one of another kind is. (A marquee lets anchors
        // nest.)
        {"<a href=x>one<marquee><a href=y>two</a></marquee>three</a>", "3 3 1 0"},
        {"<a href=x>one<area href=y>two</a>", "2 2 2 0"},
        {"<table><tr><td>one</table>", "0 0 0 1"},
        // The words of a table stand in its cells, outside the anchor around it.
        {"<a href=x>one<table><tr><td>two</table></a>", "1 1 1 1"},
        {"one<script>two</script>", "1 0 0 0"},
        {"<img src=x alt=one>", "0 0 0 0"},
    };
    for (const Case& c : cases) {
        const ZOT::SmartPtr<KTable> root = ContentOf(c.html);
        EXPECT_EQ(Counts(*root->GetCell(0, 1)), c.dump) << c.html;
    }
}

TEST(NodeWalker, ACellIsOutsideTheAnchorAroundItsTable) {
    const ZOT::SmartPtr<KTable> root =
        ContentOf("<a href=x>one<table><tr><td>two<a href=y>three</a></table></a>");
    const ZOT::SmartPtr<KCell> body = root->GetCell(0, 1);
    const ZOT::SmartPtr<KTable> table = (*(body->Begin() + 1))->Table();
    EXPECT_EQ(Counts(*table->GetCell(0, 0)), "2 1 1 0");
}

TEST(NodeWalker, TablesKnowTheirPlace) {
    const ZOT::SmartPtr<KTable> root = ContentOf("<table><tr><td>A<td><table><tr><td>B</table></table>");
    const ZOT::SmartPtr<KTable> outer = (*root->GetCell(0, 1)->Begin())->Table();
    EXPECT_EQ(outer->ParentTable(), root.Get());
    EXPECT_EQ(outer->Level(), 1u);
    EXPECT_EQ(outer->GetCell(1, 0)->Col(), 1u);
    const ZOT::SmartPtr<KTable> inner = (*outer->GetCell(1, 0)->Begin())->Table();
    EXPECT_EQ(inner->ParentTable(), outer.Get());
    EXPECT_EQ(inner->Level(), 2u);
}

TEST(NodeWalker, TextsKnowTheirSource) {
    const ZOT::SmartPtr<KTable> root = ContentOf("<p> one <b>two");
    const ZOT::SmartPtr<KCell> body = root->GetCell(0, 1);
    EXPECT_EQ((*body->Begin())->SourcePosition(), 3u);
    EXPECT_EQ((*body->Begin())->SourceLength(), 5u);
    EXPECT_EQ((*(body->Begin() + 1))->SourcePosition(), 11u);
}

}  // namespace
}  // namespace QuillNS
