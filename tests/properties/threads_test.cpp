// Calls at the same time, for the thread sanitizer above all.

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>
#include <quill/beautify.h>
#include <quill/text_extractor.h>
#include <zot/memory_buffer.h>

#include "properties/random_page.h"
#include "properties/text_of_page.h"

namespace {

using namespace QuillNS;

constexpr unsigned int kThreads = 4;
constexpr unsigned int kPages = 40;

void OnThreads(const std::function<void(unsigned int)>& work) {
    std::vector<std::thread> threads;
    for (unsigned int n = 0; n < kThreads; ++n) threads.emplace_back(work, n);
    for (std::thread& thread : threads) thread.join();
}

std::vector<std::string> Pages() {
    std::vector<std::string> pages;
    for (unsigned int seed = 0; seed < kPages; ++seed) pages.push_back(RandomPage(seed, PageKind::kContent));
    return pages;
}

// Only the library is shared. Every thread takes the pages in another order.
TEST(Threads, CallsOfTheirOwnDoNotDisturbEachOther) {
    const std::vector<std::string> pages = Pages();
    std::vector<PageText> texts;
    for (const std::string& page : pages) texts.push_back(TextOfBytes(page, ZOT::kCharsetNone));
    OnThreads([&](unsigned int thread) {
        for (unsigned int i = 0; i < kPages; ++i) {
            const unsigned int n = (i * (2 * thread + 1) + thread) % kPages;
            EXPECT_EQ(TextOfBytes(pages[n], ZOT::kCharsetNone), texts[n]);
            EXPECT_EQ(TextOfTree(pages[n], ZOT::kCharsetNone), texts[n]);
            TextOfPartition(pages[n], ZOT::kCharsetUtf8);
            TextOfString(pages[n]);
        }
    });
}

std::u16string Extract(const ZOT::SmartPtr<KTable>& root) {
    ZOTFile::MemoryBuffer out(64);
    DocumentType type = LinkPage;
    ExtractText(root, &out, &type);
    std::u16string text;
    out.SeekG(0, ZOT::kFromBegin);
    out.Copy(text, ZOT::kWholeStream);
    return text;
}

// The tree goes with the last thread that holds it.
TEST(Threads, OneContentTreeIsReadByAll) {
    for (const std::string& page : Pages()) {
        ZOTFile::MemoryBuffer bytes(page.data(), static_cast<unsigned int>(page.size()), 0);
        ZOT::SmartPtr<KTable> root = GetDocumentTree(bytes, ZOT::kCharsetUtf8);
        const std::u16string text = Extract(root);
        std::vector<ZOT::SmartPtr<KTable>> holders(kThreads, root);
        root = nullptr;
        OnThreads([&](unsigned int thread) {
            EXPECT_EQ(Extract(holders[thread]), text);
            holders[thread] = nullptr;
        });
    }
}

TEST(Threads, OneParsedPageIsReadByAll) {
    const ZOTParser::HtmlKeywordTable::PrtType reading = ZOTParser::HtmlKeywordTable::kDefaultReading;
    ZOTParser::HtmlKeywordTable keywords(reading);
    for (const std::string& page : Pages()) {
        ZOTFile::MemoryBuffer bytes(page.data(), static_cast<unsigned int>(page.size()), 0);
        ZOTParser::HtmlDocTree tree(ZOT::kCharsetUtf8);
        ZOTParser::HtmlDocParser(bytes, keywords, tree).Parse();
        const PageText text = TextOfBytes(page, ZOT::kCharsetUtf8);
        OnThreads([&](unsigned int) {
            PageText read;
            Beautify(tree, read.text, &read.documentText, &read.type);
            EXPECT_EQ(read, text);
        });
    }
}

}  // namespace
