#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <quill/partitions.h>
#include <zot/memory_buffer.h>

namespace QuillNS {
namespace {

using Child = ZOT::RefCount<HtmlDocPartitions>;

// A stream that writes a letter into a log when it goes.
class LoggedStream : public ZOTFile::MemoryBuffer {
public:
    LoggedStream(std::string& log, char letter) : MemoryBuffer(16), log_(log), letter_(letter) {}
    ~LoggedStream() override { log_ += letter_; }

private:
    std::string& log_;
    char letter_;
};

HtmlDocPartitions WithStream(ZOT::BinaryStreamBuf* stream, ZOT::CHARSET charset = ZOT::kCharsetUtf8) {
    return {ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(stream, true)), charset,
            HtmlDocPartitions::HtmlContent};
}

HtmlDocPartitions Logged(std::string& log, char letter) {
    return WithStream(new LoggedStream(log, letter));
}

HtmlDocPartitions WithPage(std::string_view html, ZOT::CHARSET charset = ZOT::kCharsetUtf8) {
    return WithStream(new ZOTFile::MemoryBuffer(html.data(), static_cast<unsigned int>(html.size()), 0),
                      charset);
}

void AddChildren(HtmlDocPartitions& parent, int count) {
    for (int i = 0; i < count; ++i) parent.children.Append(Child(new HtmlDocPartitions));
}

bool SameChildren(const HtmlDocPartitions& a, const HtmlDocPartitions& b) {
    if (a.children.Size() != b.children.Size()) return false;
    for (std::size_t i = 0; i < a.children.Size(); ++i) {
        if (a.children[i].Get() != b.children[i].Get()) return false;
    }
    return true;
}

TEST(HtmlDocPartitions, StartsEmptyWithRoom) {
    const HtmlDocPartitions partition;
    EXPECT_FALSE(partition.stream);
    EXPECT_EQ(partition.charset, ZOT::kCharsetNone);
    EXPECT_EQ(partition.contentType, HtmlDocPartitions::HtmlContent);
    EXPECT_EQ(partition.children.Size(), 0u);
    EXPECT_EQ(partition.children.Capacity(), 16u);
}

TEST(HtmlDocPartitions, CopiesShareTheirPartsButNotTheList) {
    std::string log;
    HtmlDocPartitions source = Logged(log, 's');
    source.contentType = HtmlDocPartitions::TextContent;
    AddChildren(source, 3);

    HtmlDocPartitions copy(source);
    EXPECT_EQ(copy.stream->Buffer(), source.stream->Buffer());
    EXPECT_EQ(copy.charset, ZOT::kCharsetUtf8);
    EXPECT_EQ(copy.contentType, HtmlDocPartitions::TextContent);
    EXPECT_TRUE(SameChildren(copy, source));
    EXPECT_EQ(copy.children.Capacity(), 3u);

    AddChildren(copy, 1);
    EXPECT_EQ(source.children.Size(), 3u);
    EXPECT_EQ(copy.children.Capacity(), 6u);
}

TEST(HtmlDocPartitions, AssignmentKeepsItsRoomWhenTheChildrenFit) {
    struct Case {
        int before, source;
        std::size_t capacity;
    };
    const Case cases[] = {{0, 3, 16}, {5, 3, 16}, {5, 16, 16}, {5, 17, 17}, {17, 3, 32}, {3, 0, 16}};
    for (const Case& c : cases) {
        HtmlDocPartitions source;
        AddChildren(source, c.source);
        HtmlDocPartitions target;
        AddChildren(target, c.before);
        const Child* const array = target.children.Begin();
        const bool fits = source.children.Size() <= target.children.Capacity();
        EXPECT_EQ(&(target = source), &target);
        EXPECT_TRUE(SameChildren(target, source));
        EXPECT_EQ(target.children.Capacity(), c.capacity);
        if (fits) {
            EXPECT_EQ(target.children.Begin(), array);
        }
    }
}

TEST(HtmlDocPartitions, AssignmentFromItselfAndFromBelow) {
    HtmlDocPartitions partition;
    AddChildren(partition, 2);
    AddChildren(*partition.children[1], 3);
    const HtmlDocPartitions& same = partition;
    partition = same;
    EXPECT_EQ(partition.children.Size(), 2u);
    partition = *partition.children[1];
    EXPECT_EQ(partition.children.Size(), 3u);
}

TEST(HtmlDocPartitions, GoOnceAndChildrenBeforeTheirParentsStream) {
    std::string log;
    {
        HtmlDocPartitions parent = Logged(log, 'p');
        parent.children.Append(Child(new HtmlDocPartitions(Logged(log, 'a'))));
        parent.children.Append(Child(new HtmlDocPartitions(Logged(log, 'b'))));
        const HtmlDocPartitions copy(parent);
        parent.children[0]->children.Append(Child(new HtmlDocPartitions(Logged(log, 'c'))));
    }
    // Arrays go from their end.
    EXPECT_EQ(log, "bcap");
}

TEST(PartitionsBeautify, JudgesAllPartitionsTogether) {
    HtmlDocPartitions top = WithPage("<p>The top page has these words.");
    top.children.Append(Child(new HtmlDocPartitions(WithPage("<p>And the frame has some more of them."))));
    top.children.Append(Child(new HtmlDocPartitions(WithPage("<p>Left out.", ZOT::kCharsetNone))));
    std::u16string text = u"before";
    std::u16string documentText;
    DocumentType type = LinkPage;
    EXPECT_TRUE(Beautify(top, text, &documentText, &type));
    EXPECT_EQ(text.find(u"before"), std::u16string::npos);
    EXPECT_NE(text.find(u"The top page has these words."), std::u16string::npos);
    EXPECT_NE(text.find(u"And the frame has some more of them."), std::u16string::npos);
    EXPECT_EQ(text.find(u"Left out."), std::u16string::npos);
    EXPECT_EQ(documentText, u"The top page has these words.");
    EXPECT_EQ(type, ContentPage);
}

TEST(PartitionsBeautify, WithoutContentThereIsNoText) {
    std::u16string text = u"before";
    DocumentType type = ContentPage;
    EXPECT_FALSE(Beautify(HtmlDocPartitions(), text, nullptr, &type));
    EXPECT_EQ(text, u"");
    EXPECT_EQ(type, LinkPage);
}

// What the stream held before makes the result true.
TEST(PartitionsBeautify, AppendsToTheStream) {
    ZOTFile::MemoryBuffer out(16);
    EXPECT_FALSE(Beautify(HtmlDocPartitions(), out, nullptr, nullptr));
    out.SafePut("x\0", 2);
    EXPECT_TRUE(Beautify(HtmlDocPartitions(), out, nullptr, nullptr));
    EXPECT_TRUE(Beautify(WithPage("<p>Some words."), out, nullptr, nullptr));
    std::u16string text;
    out.SeekG(0, ZOT::kFromBegin);
    out.Copy(text, ZOT::kWholeStream);
    EXPECT_EQ(text.front(), u'x');
    EXPECT_NE(text.find(u"Some words."), std::u16string::npos);
}

}  // namespace
}  // namespace QuillNS
