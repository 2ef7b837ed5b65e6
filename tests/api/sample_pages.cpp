#include "api/sample_pages.h"

#include <string_view>

namespace {

std::string Repeated(std::string_view piece, unsigned int count) {
    std::string text;
    for (; count != 0; --count) text += piece;
    return text;
}

}  // namespace

const std::vector<std::string>& SamplePages() {
    static const std::vector<std::string> pages = {
        "<ul><li><a href=a>One</a><li><a href=b>Two</a></ul><h1>A heading</h1><pre>some\n text</pre>"
        "<table><tr><td rowspan=2>left<td>Many words in a table, more than "
        "elsewhere.<tr><td><table><tr><td>and "
        "in a table inside it</table></table><p>The end.",
        // More text than the first buffers hold, more nodes than the first array, more items than a cell's
        // room.
        Repeated("<p>Words &amp; <b>more</b> words", 200) + "<table>" + Repeated("<tr><td>a<td>b", 40),
        Repeated("<a href=x>link</a> ", 40),
        "<table>foster<i>parent</table><select><selectedcontent></selectedcontent><option>x<b>y</select>"
        "<template><p>left out</template><body class=a><b><p>mis</b>nested<svg><a>x</svg>",
        Repeated("<div><p>Blocks of words that are content.</p></div>", 30) + "<nav>clutter</nav>",
        // Every part of the block reading: prose and a form, a main element, a data table, code, hidden parts
        // and text on both sides of a block.
        "<nav>a<a href=x>b</a></nav><form><input>find</form><div>" +
            Repeated("<p>A sentence of prose that has some words and ends. ", 8) +
            "<table><caption>Data<tr><th>Name<th>Age<tr><td>Bob<td>42</table><pre>x\n<b>y</b>\n</pre><p>"
            "<span hidden>hidden</span>before<div aria-hidden=true>gone</div><div>inside</div>after</div>"
            "<footer>foot</footer>",
        "<div>left</div><main>" + Repeated("<p>The main element holds what is read, all of it. ", 8) +
            "</main><aside>right</aside>",
        // Cards, where there is no prose.
        Repeated("<div><a href=x><h3>A card</h3><img src=y>with a text</a><a href=x>name</a></div>", 12) +
            "<div>beside</div>",
        // A page that waits for a script.
        "<p>Loading<div hidden>" + Repeated("<p>The text that was locked away. ", 10) +
            "</div><noscript>Turn it on</noscript>",
    };
    return pages;
}
