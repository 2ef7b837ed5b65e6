#include <gtest/gtest.h>
#include <quill/quill.h>
#include <zot/memory_buffer.h>

// Lines of the text where a reader of the page sees lines.

namespace {

std::u16string TextOf(const std::string& body) {
    const std::string page = "<!DOCTYPE html><div>" + body + "</div>";
    ZOTFile::MemoryBuffer stream(page.data(), static_cast<unsigned int>(page.size()), 0);
    std::u16string text;
    QuillNS::Beautify(stream, ZOT::kCharsetUtf8, text, nullptr, nullptr);
    return text;
}

struct Case {
    const char* body;
    const char16_t* text;
};

TEST(Lines, OfATextThatIsLaidOutWithBlocks) {
    const Case cases[] = {
        // A row of a data table is a line; its cells are parted by one blank, whatever stands between their
        // tags.
        {"a<table><tr><th>Name<th>Age<tr><td>Bob</td>\n<td>42</td>\n</table>", u"a\nName Age\nBob 42\n\n\n"},
        {"a<table><tr><td>1<td>2<tr><td><b>3</b><td>4</table>b", u"a\n1 2\n3 4\n\nb\n\n"},
        // One whose cells hold blocks is a layout: every cell has lines of its own.
        {"a<table><tr><td><p>1<td>2<tr><td>3<td>4</table>", u"a\n1\n\n2\n\n3\n4\n\n"},
        // Hidden cells stay out.
        {"a<table><tr><td>1<td hidden>x<td>2<tr><td>3<td>4</table>", u"a\n1 2\n3 4\n\n\n"},
        // Preformatted text keeps its lines in inline elements too, and runs into nothing.
        {"a<pre>x\n  <code>y\n<i>z</i></code></pre>b", u"a\nx\n  y\nz\nb\n\n"},
        {"a<pre>x\n<i>y</i>\n<i> \n</i></pre><p>b", u"a\nx\ny\n\nb\n\n"},
        {"a<pre> </pre>b<pre></pre>c", u"a\nb\nc\n\n"},
        {"<pre>x<i>\n</i><br><b> <h2>y<i>\n</i></h2></b><h2>z</h2></pre>", u"x\n\ny\n\nz\n\n\n"},
        {"<pre>x<i>\n</i>&nbsp;<i>\xE2\x80\x83</i><h2>y</h2></pre>", u"x\n\ny\n\n\n"},
        // A table in the story reads as a part of it.
        {"<p>A paragraph of the story, which is long enough to be one of prose.<pre>x<i>\n</i>"
         "<table><tr><td><p>y</table></pre>",
         u"A paragraph of the story, which is long enough to be one of prose.\n\nx\n\ny\n\n\n"},
        // A table that is not chosen parts them as well.
        {"Some words of the text that is to win here<div><a href=x>left out</a></div>go on behind it.",
         u"Some words of the text that is to win here\ngo on behind it.\n\n"},
        // Inline elements part no word; blocks do.
        {"wo<b>r</b>d<p>one<h2>two</h2>three", u"word\n\none\n\ntwo\nthree\n\n"},
    };
    for (const Case& c : cases) EXPECT_EQ(TextOf(c.body), c.text) << c.body;
}

}  // namespace
