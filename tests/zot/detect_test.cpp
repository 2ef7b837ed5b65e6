#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <zot/detect.h>

#include "guess.h"

namespace {

using namespace std::string_literals;
using ZOT::CHARSET;

template <class Function>
CHARSET Apply(Function function, const std::string& page) {
    const std::vector<unsigned char> bytes(page.begin(), page.end());  // of exactly the page's size
    return function(bytes.data(), bytes.size());
}
CHARSET Detected(const std::string& page) {
    return Apply(ZOT::DetectEncoding, page);
}
CHARSET Declared(const std::string& page) {
    return Apply(ZOT::DeclaredEncoding, page);
}

std::string Utf16(std::string_view ascii, bool highFirst) {
    std::string bytes;
    for (const char c : ascii) {
        if (highFirst) bytes += '\0';
        bytes += c;
        if (!highFirst) bytes += '\0';
    }
    return bytes;
}

struct Case {
    std::string page;
    CHARSET charset;
};

TEST(DeclaredEncoding, FollowsTheStandard) {
    const Case cases[] = {
        {"", ZOT::kCharsetNone},
        {"<meta charset=koi8-r>", ZOT::kCharsetKoi8R},
        {"<META CHARSET='KOI8-R'/>", ZOT::kCharsetKoi8R},
        {"<meta charset=koi8-r", ZOT::kCharsetNone},
        {"<meta charset=utf-16be>", ZOT::kCharsetUtf8},
        {"<meta charset=x-user-defined>", ZOT::kCharsetWindows1252},
        {"<meta charset=nonsense><meta charset=big5>", ZOT::kCharsetBig5},
        {"<meta charset=nonsense content='text/html; charset=big5' http-equiv=content-type>",
         ZOT::kCharsetNone},
        {"<meta content='text/html; charset=big5' charset=gbk>", ZOT::kCharsetGbk},
        {"<meta content='text/html; charset=big5'>", ZOT::kCharsetNone},
        {"<meta http-equiv=Content-Type content='charset; charset = \"big5\"; x'>", ZOT::kCharsetBig5},
        {"<meta http-equiv=Content-Type content='charset=\"big5'>", ZOT::kCharsetNone},
        {"<meta http-equiv=refresh http-equiv=content-type content='charset=big5'>", ZOT::kCharsetNone},
        {"<!-- <meta charset=big5> --><meta charset=gbk>", ZOT::kCharsetGbk},
        {"<!--><meta charset=big5>", ZOT::kCharsetBig5},
        {"<!--->-<meta charset=big5>", ZOT::kCharsetBig5},
        {"<a title='<meta charset=big5>'><meta charset=gbk>", ZOT::kCharsetGbk},
        {"</a title='>'<meta charset=big5>", ZOT::kCharsetNone},
        {"<? ><! x><meta/charset=big5>", ZOT::kCharsetBig5},
        {"<script>'<meta charset=big5>'</script>", ZOT::kCharsetBig5},
        {std::string(1003, ' ') + "<meta charset=big5>", ZOT::kCharsetBig5},
        {std::string(1006, ' ') + "<meta charset=big5>", ZOT::kCharsetNone},
        {"<?xml version='1.0' encoding='koi8-r'?><p>", ZOT::kCharsetKoi8R},
        {"<?xml version='1.0' encoding = \"utf-16\" ?>", ZOT::kCharsetUtf8},
        {"<?xml encoding='koi8-r'?><meta charset=gbk>", ZOT::kCharsetGbk},
        {"<?xml encoding='koi8-r", ZOT::kCharsetNone},
        {" <?xml encoding='koi8-r'?>", ZOT::kCharsetNone},
        {Utf16("<?x", false), ZOT::kCharsetUtf16Le},
        {Utf16("<?x", true), ZOT::kCharsetUtf16Be},
    };
    for (const Case& c : cases) EXPECT_EQ(Declared(c.page), c.charset) << c.page;
}

TEST(DetectEncoding, TakesTheFirstSignThatThereIs) {
    const Case cases[] = {
        {"", ZOT::kCharsetWindows1252},
        {"plain", ZOT::kCharsetWindows1252},
        {"\xEF\xBB\xBF<meta charset=big5>", ZOT::kCharsetUtf8},
        {"\xFF\xFE<\0"s, ZOT::kCharsetUtf16Le},
        {"\xFE\xFF\0<"s, ZOT::kCharsetUtf16Be},
        {"<meta charset=koi8-r>\xC3\xA4\xC3\xA4", ZOT::kCharsetKoi8R},
        // Sent on as UTF-8 by somebody who left the declaration alone.
        {"<meta charset=koi8-r>\xC3\xA4\xC3\xB6\xC3\xBC", ZOT::kCharsetUtf8},
        {"<meta charset=koi8-r>\xC3\xA4\xC3\xB6\xC3\xBC\xE4 ", ZOT::kCharsetKoi8R},
        {"<meta charset=gbk>\xC3\xA4\xC3\xB6\xC3\xBC", ZOT::kCharsetGbk},
        {Utf16("<html><meta charset=big5>", false), ZOT::kCharsetUtf16Le},
        {Utf16("<p>", true) + "\x04\x10\x04\x11\x04\x12\x04\x13", ZOT::kCharsetUtf16Be},
        {"a few zeros\0\0 are none"s, ZOT::kCharsetWindows1252},
        {"<p>\xC3\xA4", ZOT::kCharsetUtf8},
        {"<p>\xC3\xA4\xE2\x82", ZOT::kCharsetUtf8},
        {"caf\xE9", ZOT::kCharsetWindows1252},
        // Nothing speaks for a Central European language here.
        {"The committee\x92s \x93work\x94 was 50\xB0\x43 too hot for B\xE9langer\x85",
         ZOT::kCharsetWindows1252},
    };
    for (const Case& c : cases) EXPECT_EQ(Detected(c.page), c.charset) << c.page;
}

TEST(DetectEncoding, GuessesWhatNothingTells) {
    const Case cases[] = {
        {"\x1B$B$3$s$K$A$O\x1B(B", ZOT::kCharsetIso2022Jp},
        {"\xCF\xF0\xE8\xE2\xE5\xF2, \xEC\xE8\xF0! \xDD\xF2\xEE \xF0\xF3\xF1\xF1\xEA\xE8\xE9 "
         "\xF2\xE5\xEA\xF1\xF2, "
         "\xEA\xEE\xF2\xEE\xF0\xFB\xE9 \xED\xE0\xE4\xEE \xEE\xEF\xF0\xE5\xE4\xE5\xEB\xE8\xF2\xFC.",
         ZOT::kCharsetWindows1251},
    };
    if (Apply(ZOT::GuessEncoding, cases[1].page) == ZOT::kCharsetNone) {
        GTEST_SKIP() << "the system has no detection";
    }
    for (const Case& c : cases) EXPECT_EQ(Detected(c.page), c.charset) << c.page;
}

// "#data\n<page>\n#encoding\n<label>\n\n" over and over.
std::vector<Case> CasesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    const std::string text = content.str();
    std::vector<Case> cases;
    const std::string data = "#data\n";
    const std::string encoding = "\n#encoding\n";
    for (std::size_t at = text.find(data); at != std::string::npos; at = text.find(data, at)) {
        at += data.size();
        const std::size_t end = text.find(encoding, at);
        const std::size_t label = end + encoding.size();
        CHARSET charset = ZOT::kCharsetNone;
        EXPECT_TRUE(ZOT::CharsetFromLabel(text.substr(label, text.find('\n', label) - label), charset));
        cases.push_back({text.substr(at, end - at), charset});
        at = label;
    }
    return cases;
}

TEST(DetectEncoding, PassesHtml5libTests) {
    const std::filesystem::path folder =
        std::filesystem::path(QUILL_SHARED_DIR) / "html5lib-tests" / "encoding";
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << folder << " is not there";
    std::size_t cases = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".dat") continue;
        for (const Case& c : CasesOf(entry.path())) {
            // This page declares EUC-JP, but whoever put it there saved it as UTF-8.
            const bool wrong = entry.path().filename() == "test-yahoo-jp.dat";
            EXPECT_EQ(wrong ? Declared(c.page) : Detected(c.page), c.charset)
                << entry.path().filename() << ":\n"
                << c.page.substr(0, 2000);
            ++cases;
        }
    }
    EXPECT_GT(cases, 0u);
}

}  // namespace
