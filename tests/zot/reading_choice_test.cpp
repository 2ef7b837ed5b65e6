#include <gtest/gtest.h>

#include <string>
#include <zot/parser.h>

#include "zot/role_dump.h"

namespace {

using namespace std::string_literals;
using ZOTParser::HtmlKeywordTable;

std::string Words(unsigned int count) {
    std::string words;
    for (unsigned int i = 0; i != count; ++i) words += "word ";
    return words;
}

std::string Roles(const std::string& page, HtmlKeywordTable::PrtType reading) {
    return Dump(ParsedPage(page, reading).Tree().Entries());
}

// Pages as other people write them: what decides is where the words stand.
TEST(ReadingChoice, TakesTheTablesWhereThePageIsLaidOutWithThem) {
    const std::string inTable = "<div></div><table><tr><td><p>" + Words(950) + "</td></tr></table>";
    struct Case {
        std::string page;
        bool tables;
    };
    const Case cases[] = {
        {"", true},
        {"text alone", true},
        {"<p>a paragraph<ul><li>and an item</ul><center>in the middle</center>", true},
        {"<form><table><tr><td>a form", true},
        {"<div>a block", false},
        {"<div></div>a block without words", false},
        {"<custom-element><section>a block", false},
        {inTable + Words(50), true},
        {inTable + Words(51), false},
        {"<table><tr><td>" + Words(94) + "<td><div>" + Words(6) + "</table>", false},
        {"<table><tr><td><div>" + Words(10) + "<table><tr><td>" + Words(190) + "</table></table>", true},
        // What nobody sees counts on neither side.
        {inTable + "<script>" + Words(500) + "</script><noscript>" + Words(500) + "</noscript>", true},
        {"<div><table><tr><td>" + Words(100) + "</table></div>", true},
        {"<div>" + Words(6) + "<table><tr><td>" + Words(100) + "</table></div>", false},
        {"<table><caption>" + Words(99) + "</caption><tr><td><div>one</table>", true},
    };
    for (const Case& c : cases) {
        const auto reading = c.tables ? HtmlKeywordTable::kTableReading : HtmlKeywordTable::kBlockReading;
        EXPECT_EQ(Roles(c.page, HtmlKeywordTable::kDefaultReading), Roles(c.page, reading))
            << c.page.substr(0, 80);
    }
}

}  // namespace
