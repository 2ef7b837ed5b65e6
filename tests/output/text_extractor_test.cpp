#include <gtest/gtest.h>
#include <string_view>
#include <quill/text_extractor.h>
#include <zot/memory_buffer.h>

#include "content_tree.h"
#include "failing_pool.h"

namespace QuillNS {
namespace {

using namespace std::string_view_literals;

// The bytes of a stream.
std::string Bytes(ZOTFile::MemoryBuffer& stream) {
    std::string bytes;
    stream.SeekG(0, ZOT::kFromBegin);
    stream.Copy(bytes, ZOT::kWholeStream);
    return bytes;
}

// The units of a stream as text.
std::string Text(ZOTFile::MemoryBuffer& stream) {
    std::u16string text;
    stream.SeekG(0, ZOT::kFromBegin);
    stream.Copy(text, ZOT::kWholeStream);
    return Narrow(text);
}

std::string WholeText(const char* tree) {
    ZOTFile::MemoryBuffer out(16);
    QuillTextExtractor(ContentTree(tree).Root(), true, nullptr).GetText(&out);
    return Text(out);
}

TEST(TextExtractor, PutsTablesAndEmptyCellsBetweenLineFeeds) {
    struct Case {
        const char *tree, *text;
    };
    const Case cases[] = {
        {"{}", ""},
        {"{ () . () }", ""},
        {"{ ('') }", ""},
        {"{ ('a') }", "a\n"},
        {"{ ('a\n\n') }", "a\n\n"},
        {"{ ('a' 'b') ('c') ; ('d') }", "abcd\n"},
        {"{ ('a') () ('b') }", "a\nb\n"},
        {"{ ('a\n') () ('b') }", "a\nb\n"},
        {"{ ('a') (_) ('b') }", "ab\n"},
        {"{ ('a' { ('b') } { ('c') } 'd') }", "a\nb\nc\nd\n"},
        {"{ ({ ({ ('a') }) }) }", "a\n"},
        {"{ ^('caption') $('summary') ('a\n') }", "a\ncaptionsummary\n"},
        // Only a line feed is a line break, and nothing is trimmed.
        {"{ (' a\r') () (' ') }", " a\r\n \n"},
    };
    for (const Case& c : cases) EXPECT_EQ(WholeText(c.tree), c.text) << c.tree;
}

TEST(TextExtractor, WritesAfterWhatTheStreamHolds) {
    struct Case {
        std::string_view before, after;
    };
    const Case cases[] = {
        {"", "a\0\n\0"sv},
        {"x\0"sv, "x\0\n\0a\0\n\0"sv},
        {"\n\0"sv, "\n\0a\0\n\0"sv},
        {"x\0\n\0"sv, "x\0\n\0a\0\n\0"sv},
        // U+0A0A and U+0A00 are no line feeds, though their bytes look like them.
        {"\n\n"sv, "\n\n\n\0a\0\n\0"sv},
        {"\0\n"sv, "\0\n\n\0a\0\n\0"sv},
        // A single byte is no unit; of three, the first two are one.
        {"x"sv, "x\n\0a\0\n\0"sv},
        {"\n\0x"sv, "\n\0xa\0"sv},
    };
    for (const Case& c : cases) {
        ZOTFile::MemoryBuffer out(16);
        out.Put(c.before.data(), static_cast<unsigned int>(c.before.size()));
        QuillTextExtractor(ContentTree("{ ('a') }").Root(), true, nullptr).GetText(&out);
        std::string bytes = Bytes(out);
        if (c.before.size() % 2 != 0)
            bytes.resize(c.after.size());  // what follows depends on units out of step
        EXPECT_EQ(bytes, c.after);
    }
}

TEST(TextExtractor, AnswersTheSameEachTime) {
    const ContentTree tree("R{ 4('one') (A{ 20('two ' 'three') }) 3/3('four') }");
    QuillTextExtractor extractor(tree.Root(), true, nullptr);
    EXPECT_EQ(extractor.CountWords(), 27u);
    for (int i = 0; i < 2; ++i) {
        ZOTFile::MemoryBuffer out(16);
        extractor.GetText(&out);
        EXPECT_EQ(Text(out), "one\ntwo three\nfour\n");
        EXPECT_EQ(extractor.CountWords(), 27u);
    }
    EXPECT_EQ(tree.Root()->NbRef(), 3);  // the tree's two and the extractor's
}

std::string RankedText(const char* tree, std::vector<double> tuning) {
    ZOTFile::MemoryBuffer out(16);
    QuillTextExtractor(ContentTree(tree).Root(), false, &tuning).GetText(&out);
    return Text(out);
}

TEST(TextExtractor, FallsBackStrictlyBelowTheRatio) {
    const char* const tree = "{ 10('a') 10/10('b') }";  // the first set admits 10 words of 20, the second all
    struct Case {
        double ratio;
        const char* text;
    };
    for (const Case& c : {Case{0.0, "a\n"}, Case{0.5, "a\n"}, Case{0.5000001, "ab\n"}, Case{1.0, "ab\n"}}) {
        EXPECT_EQ(RankedText(tree, {0.0, 1.0, 0.5, 0.0, 0.0, 1.0, -1.0, 0.0, c.ratio}), c.text) << c.ratio;
    }
    // When nothing wins with the first set, any page with a word falls back.
    EXPECT_EQ(RankedText(tree, {9.0, 1.0, 0.5, 0.0, 0.0, 1.0, 0.5, 0.0, 0.01}), "a\n");
    EXPECT_EQ(RankedText(tree, {9.0, 1.0, 0.5, 0.0, 0.0, 1.0, 0.5, 0.0, 0.0}), "");
    EXPECT_EQ(RankedText("{ 0('a') }", {9.0, 1.0, 0.5, 0.0, 0.0, 1.0, -1.0, 0.0, 1.0}), "");
    // There is no third attempt.
    EXPECT_EQ(RankedText(tree, {0.0, 1.0, 0.5, 0.0, 9.0, 1.0, 0.5, 0.0, 1.0}), "");
}

TEST(TextExtractor, FallsBackByTheWordsThatTheWalkMeets) {
    const auto fallsBack = [](const ContentTree& tree, double ratio, double high = 1.0) {
        std::vector<double> tuning = {0.0, high, 0.0, 0.0, 9.0, 1.0, 0.0, 9.0, ratio};
        return QuillTextExtractor(tree.Root(), false, &tuning).CountWords() == 0;
    };
    const ContentTree plain("{ 100('a' { 300('b') }) }");
    EXPECT_FALSE(fallsBack(plain, 1.0));
    EXPECT_TRUE(fallsBack(plain, 1.01));

    // A cell whose rank is the score is left out.
    EXPECT_TRUE(fallsBack(ContentTree("{ 1('b' { 10/10('a') }) }"), 0.5));

    const ContentTree captioned("{ 100('a' { 200('b') }) ^100('c') }");
    EXPECT_FALSE(fallsBack(captioned, 1.0));
    EXPECT_TRUE(fallsBack(captioned, 1.01));

    // Where an item is both, the walk takes the text and leaves the table.
    const ContentTree both("{ 100({ 300('b') }) }");
    (*(*both.Root()->Begin())->Begin())->AppendText(u"a", 0, 0);
    EXPECT_FALSE(fallsBack(both, 0.25));
    EXPECT_TRUE(fallsBack(both, 0.26));

    // A table in two places wins below the one table and is met below the other, too: 120 words of 320.
    const ContentTree shared("{ ({ 100('a' X{ 10/9('x') }) } B{ 200/200('b') }) }");
    (*shared.Table("B")->Begin())->AddCellItem()->Table(shared.Table("X"));
    EXPECT_FALSE(fallsBack(shared, 119.5 / 320, 0.0));
    EXPECT_TRUE(fallsBack(shared, 120.5 / 320, 0.0));
}

TEST(TextExtractor, ReadsTheTuningInItsOrder) {
    // Low, high, cell score, winners' low: each in turn decides.
    const char* const tree = "R{ 1/1('r' A{ 100('a' X{ 30/24('x') 1('y') }) }) }";
    EXPECT_EQ(RankedText(tree, {0.0, 1.0, 0.0, 0.0, 9, 9, 9, 9, 0.0}), "a\nxy\n");
    EXPECT_EQ(RankedText(tree, {9.0, 1.0, 0.0, 0.0, 9, 9, 9, 9, 0.0}), "");
    EXPECT_EQ(RankedText(tree, {0.0, 0.0, 0.0, 9.0, 9, 9, 9, 9, 0.0}), "a\n");
    EXPECT_EQ(RankedText(tree, {0.0, 0.0, 0.0, 0.0, 9, 9, 9, 9, 0.0}), "a\nxy\n");
    EXPECT_EQ(RankedText(tree, {0.0, 1.0, 0.2, 0.0, 9, 9, 9, 9, 0.0}), "a\ny\n");
    EXPECT_EQ(RankedText(tree, {9, 9, 9, 9, 0.0, 0.0, 0.0, 9.0, 1.0}), "a\n");
    EXPECT_EQ(RankedText(tree, {9, 9, 9, 9, 0.0, 1.0, 0.2, 0.0, 1.0}), "a\ny\n");
}

struct Tuned : QuillTextExtractor {
    Tuned() : QuillTextExtractor(ContentTree("{}").Root(), true, nullptr) {}
    using QuillTextExtractor::InitParameters;
};

TEST(TextExtractor, BuiltInNumbers) {
    const ZOT::SmartPtr<KRankParameters> first(new KRankParameters, true);
    const ZOT::SmartPtr<KRankParameters> second(new KRankParameters, true);
    double ratio = 0.0;
    Tuned().InitParameters(first, second, ratio);
    EXPECT_EQ(first->LowThreshold(), 0.212131);
    EXPECT_EQ(first->HiThreshold(), 0.596276);
    EXPECT_EQ(first->CellLowScore(), 0.436295);
    EXPECT_EQ(first->WinnerLowThreshold(), 0.453539);
    EXPECT_EQ(second->LowThreshold(), 0.515806);
    EXPECT_EQ(second->HiThreshold(), 0.560831);
    EXPECT_EQ(second->CellLowScore(), 0.202551);
    EXPECT_EQ(second->WinnerLowThreshold(), 0.568495);
    EXPECT_EQ(ratio, 0.635552);
    EXPECT_EQ(first->WordCount(0), 0.4);
}

struct Extracted {
    DocumentType type;
    std::string text;
};

Extracted Extract(const char* tree) {
    ZOTFile::MemoryBuffer out(16);
    DocumentType type{};
    ExtractText(ContentTree(tree).Root(), &out, &type);
    return {type, Text(out)};
}

TEST(ExtractText, TellsLinkPagesFromContent) {
    struct Case {
        const char* tree;
        DocumentType type;
    };
    const Case cases[] = {
        {"{}", LinkPage},
        {"{ 0k5('a') }", LinkPage},
        // The share of words outside links, at its bound and above, with few words for each link.
        {"{ 10000000/9267742k100000 }", LinkPage},
        {"{ 10000000/9267741k100000 }", ContentPage},
        // The words for each link, at the bound and above, with a small share.
        {"{ 1000000000/999772258k10000 }", LinkPage},
        {"{ 1000000000/999772257k10000 }", ContentPage},
        // Without links the share decides alone.
        {"{ 100/95 }", LinkPage},
        {"{ 100/90 }", ContentPage},
        // All levels count, captions too.
        {"{ 1/1({ 1/1({ 50 }) }) }", ContentPage},
        {"{ 1/1 ^({ 1/1({ 50 }) }) }", ContentPage},
    };
    for (const Case& c : cases) EXPECT_EQ(Extract(c.tree).type, c.type) << c.tree;
}

TEST(ExtractText, WritesLinkPagesWholeAndOfOthersTheContent) {
    EXPECT_EQ(Extract("{ 20/20k20('menu') ({ 5/5k5('more') }) }").text, "menu\nmore\n");
    EXPECT_EQ(Extract("{ 20/20k20('menu') 200('story') ; 30/29k9('more') }").text, "story\n");
    EXPECT_EQ(Extract("{ (A{ 20/20k20('menu') } B{ 200('story') }) }").text, "story\n");
    EXPECT_EQ(Extract("{ (B{ 200('story') ^5('caption') $4/4('tags') }) }").text, "storycaption\n");
}

TEST(ExtractText, SurvivesAFailedAllocationAnywhere) {
    const char* const kPage = "{ ('x' { 40('a') } { 9/9k9('b' { 30('c') }) }) }";
    const ContentTree tree(kPage);
    const unsigned int before = LiveAllocations();
    for (unsigned int n = 1;; ++n) {
        bool failed = false;
        std::string text;
        {
            ZOTFile::MemoryBuffer out(4096);
            out.Put("", 1);  // the room is there before memory gets short
            out.vClear();
            DocumentType type;
            {
                const FailFromNthAllocation failing(n);
                ExtractText(tree.Root(), &out, &type);
                failed = failing.Happened();
            }
            EXPECT_EQ(type, ContentPage);
            text = Text(out);
        }
        EXPECT_EQ(LiveAllocations(), before) << "left behind when allocation " << n << " fails";
        EXPECT_EQ(text, failed ? "" : "a\nc\n") << n;
        if (!failed) break;
    }
}

}  // namespace
}  // namespace QuillNS
