#include "capture.h"

#include <gtest/gtest.h>
#include <quill/exports.h>
#include <zot/memory_buffer.h>

#include "api/fake_browser.h"
#include "api/fake_strings.h"

namespace QuillNS {
namespace {

// `html 65001 "bytes" [children]`; `none` for a missing stream.
std::string Dump(const HtmlDocPartitions& partition) {
    std::string line = partition.contentType == HtmlDocPartitions::TextContent ? "text" : "html";
    line += " " + std::to_string(static_cast<int>(partition.charset));
    if (partition.stream) {
        std::string bytes;
        partition.stream->Buffer()->SeekG(0, ZOT::kFromBegin);
        partition.stream->Buffer()->Copy(bytes, ZOT::kWholeStream);
        line += " '" + bytes + "'";
    } else {
        line += " none";
    }
    if (partition.children.Size() == 0) return line;
    std::string separator = " [";
    for (const auto& child : partition.children) {
        line += separator + Dump(*child);
        separator = ", ";
    }
    return line + "]";
}

class Capture : public ::testing::Test {
protected:
    void SetUp() override { strings_ = LiveStrings(); }
    void TearDown() override { ExpectNothingLeft(); }

    void ExpectNothingLeft() {
        EXPECT_EQ(world_.Live(), 0);
        EXPECT_EQ(LiveStrings(), strings_);
    }

    HRESULT CaptureTree(const FakePage& page, HtmlDocPartitions& partition) {
        IHTMLDocument2* const document = world_.Document(page);
        const HRESULT result = CaptureDocumentTree(document, partition);
        document->Release();
        return result;
    }

    // Of a capture that succeeds.
    std::string DumpOf(const FakePage& page) {
        HtmlDocPartitions partition;
        EXPECT_EQ(CaptureTree(page, partition), S_OK);
        return Dump(partition);
    }

    FakeWorld world_;
    int strings_ = 0;
};

FakePage Saved(const std::string& source) {
    FakePage page;
    page.source = source;
    return page;
}

FakePage Shown(const std::u16string& body) {
    FakePage page;
    page.body = body;
    return page;
}

FakePage WithMime(FakePage page, const std::u16string& mime) {
    page.mime = mime;
    return page;
}

FakePage Framing(FakePage page, std::vector<FakePage::Embedded> embedded) {
    page.embedded = std::move(embedded);
    return page;
}

FakePage::Embedded Frame(FakePage page) {
    return {true, true, std::move(page)};
}

TEST_F(Capture, TakesTheSourceOrTheBody) {
    struct Case {
        FakePage page;
        std::string dump;
    };
    const Case cases[] = {
        {Saved("<p>tide"), "html 1252 '<p>tide'"},
        {Saved(""), "html -1 ''"},
        {Saved("<meta charset=utf-8>\xC3\xA9"), "html 65001 '<meta charset=utf-8>\xC3\xA9'"},
        {Saved("<meta charset=koi8-r>\xC4"), "html 20866 '<meta charset=koi8-r>\xC4'"},
        // UTF-16, low byte first, becomes UTF-8; high byte first is left to the parser.
        {Saved(std::string("\xFF\xFE\xE9\0", 4)), "html 65001 '\xEF\xBB\xBF\xC3\xA9'"},
        {Saved(std::string("\xFE\xFF\0a", 4)), std::string("html 1200 '\xFE\xFF\0a'", 16)},
        // The source goes before the body.
        {[] {
             FakePage page = Saved("<p>tide");
             page.body = u"<body>moon";
             return page;
         }(),
         "html 1252 '<p>tide'"},
        {Shown(u"<body>\u00E9"), "html 65001 '<body>\xC3\xA9'"},
        {Shown(std::u16string(u"<body>a\0b", 9)), "html 65001 '<body>a'"},
        {Shown(u""), "html 65001 ''"},
        {FakePage(), "html -1 none"},
        {WithMime(Saved("x"), u"Text Document"), "text 1252 'x'"},
        {WithMime(Saved("x"), std::u16string(u"Text Document\0.", 15)), "text 1252 'x'"},
        {WithMime(Saved("x"), u"text document"), "html 1252 'x'"},
        {WithMime(Saved("x"), u"Text Document "), "html 1252 'x'"},
        {WithMime(Saved("x"), u""), "html 1252 'x'"},
    };
    for (const Case& c : cases) EXPECT_EQ(DumpOf(c.page), c.dump);
}

TEST_F(Capture, FramesBecomeChildrenInTheContainersOrder) {
    const FakePage page = Framing(Saved("top"), {
                                                    Frame(Framing(Saved("a"), {Frame(Saved("aa"))})),
                                                    {false, true, {}},  // no browser
                                                    {true, false, {}},  // a browser that shows nothing
                                                    Frame(Shown(u"b")),
                                                    Frame(FakePage()),  // a document without anything
                                                });
    EXPECT_EQ(DumpOf(page), "html 1252 'top' [html 1252 'a' [html 1252 'aa'], html 65001 'b', html -1 none]");
}

TEST_F(Capture, ADocumentThatListsNothingHasNoChildren) {
    FakePage page = Framing(Saved("top"), {Frame(Saved("a"))});
    page.container = false;
    EXPECT_EQ(DumpOf(page), "html 1252 'top'");
}

// Whichever call fails: everything is released, frames never fail the capture, and the top document's own
// calls give their code.
TEST_F(Capture, ReleasesEverythingWhicheverCallFails) {
    const FakePage page = Framing(Saved("top"), {
                                                    Frame(Framing(Shown(u"a"), {Frame(Saved("aa"))})),
                                                    {false, true, {}},
                                                    Frame(Saved("b")),
                                                });
    const FakePage bodyOnly = Framing(Shown(u"top"), {Frame(Saved("a"))});
    for (const FakePage* each : {&page, &bodyOnly}) {
        int failures = 0;
        for (int n = 1;; ++n) {
            HtmlDocPartitions partition;
            IHTMLDocument2* const document = world_.Document(*each);
            world_.FailNthCall(n);
            const HRESULT result = CaptureDocumentTree(document, partition);
            const bool failed = world_.Failed();
            world_.FailNthCall(0);
            document->Release();
            ExpectNothingLeft();
            EXPECT_TRUE(result == S_OK || result == E_FAIL) << n;
            if (result != S_OK) ++failures;
            if (!failed) break;
        }
        EXPECT_EQ(failures, each == &page ? 1 : 2);  // Save; get_body and get_outerHTML
    }
}

TEST_F(Capture, AMimeTypeThatCannotBeHadIsHtml) {
    const FakePage page = WithMime(Saved("x"), u"Text Document");
    world_.FailNthCall(1);
    EXPECT_EQ(DumpOf(page), "html 1252 'x'");
}

TEST_F(Capture, AFailingFrameKeepsItsChild) {
    const FakePage page = Framing(Saved("top"), {Frame(Shown(u"a")), Frame(Saved("b"))});
    // mime, stream, save, container, list, next, browser, document, document2; mime, stream, body of the
    // frame.
    world_.FailNthCall(12);
    EXPECT_EQ(DumpOf(page), "html 1252 'top' [html -1 none, html 1252 'b']");
}

TEST_F(Capture, EndsWithAPageThatFramesItself) {
    FakePage page = Saved("x");
    for (int i = 0; i < 200; ++i) page = Framing(Saved("x"), {Frame(std::move(page))});
    HtmlDocPartitions partition;
    EXPECT_EQ(CaptureTree(page, partition), S_OK);
    int depth = 0;
    for (const HtmlDocPartitions* p = &partition; p->children.Size() != 0; p = p->children[0].Get()) ++depth;
    EXPECT_EQ(depth, 100);
}

TEST_F(Capture, TakesAThousandFrames) {
    const FakePage page = Framing(Saved("x"), std::vector<FakePage::Embedded>(1200, Frame(Saved("y"))));
    HtmlDocPartitions partition;
    EXPECT_EQ(CaptureTree(page, partition), S_OK);
    EXPECT_EQ(partition.children.Size(), 1000u);
}

TEST(FillFromSource, FiltersWhatNobodyKnows) {
    HtmlDocPartitions partition;
    FillFromSource(
        "a\xE9"
        "bc",
        4, ZOT::kCharsetNone, partition);
    EXPECT_EQ(Dump(partition), "html 1252 'bc '");
}

}  // namespace
}  // namespace QuillNS
