#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <ole/automation.h>

namespace {

class MemoryStream : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream_), S_OK); }
    void TearDown() override { EXPECT_EQ(stream_->Release(), 0u); }

    void Write(const std::string& bytes) {
        ULONG written = 0;
        EXPECT_EQ(stream_->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written), S_OK);
        EXPECT_EQ(written, bytes.size());
    }
    static std::string Read(IStream* stream, ULONG count) {
        std::string bytes(count, '?');
        ULONG read = 0;
        EXPECT_TRUE(SUCCEEDED(stream->Read(bytes.data(), count, &read)));
        bytes.resize(read);
        return bytes;
    }
    static HRESULT Seek(IStream* stream, LONGLONG move, DWORD origin) {
        LARGE_INTEGER distance;
        distance.QuadPart = move;
        return stream->Seek(distance, origin, nullptr);
    }
    ULONGLONG Size() {
        STATSTG status;
        EXPECT_EQ(stream_->Stat(&status, STATFLAG_NONAME), S_OK);
        EXPECT_EQ(status.type, DWORD{STGTY_STREAM});
        EXPECT_EQ(status.pwcsName, nullptr);
        return status.cbSize.QuadPart;
    }

    IStream* stream_ = nullptr;
};

TEST_F(MemoryStream, ReadsBackWhatWasWritten) {
    Write("tides ");
    Write("and the moon");
    EXPECT_EQ(Size(), 18u);
    EXPECT_EQ(Read(stream_, 5), "");
    Seek(stream_, -8, STREAM_SEEK_END);
    EXPECT_EQ(Read(stream_, 3), "the");
    Seek(stream_, 1, STREAM_SEEK_CUR);
    EXPECT_EQ(Read(stream_, 100), "moon");
    Seek(stream_, 0, STREAM_SEEK_SET);
    EXPECT_EQ(Read(stream_, 5), "tides");
}

TEST_F(MemoryStream, ItsBytesCanBeReadInPlace) {
    const std::string page(100000, 'x');
    Write(page);
    HGLOBAL memory = nullptr;
    ASSERT_EQ(GetHGlobalFromStream(stream_, &memory), S_OK);
    ASSERT_GE(GlobalSize(memory), page.size());
    EXPECT_EQ(std::memcmp(GlobalLock(memory), page.data(), page.size()), 0);
    GlobalUnlock(memory);
}

TEST_F(MemoryStream, GrowsAndShrinksToASize) {
    Write("tide");
    ULARGE_INTEGER size;
    size.QuadPart = 2;
    EXPECT_EQ(stream_->SetSize(size), S_OK);
    EXPECT_EQ(Size(), 2u);
    size.QuadPart = 70000;
    EXPECT_EQ(stream_->SetSize(size), S_OK);
    EXPECT_EQ(Size(), 70000u);
}

TEST_F(MemoryStream, SeeksNotBeforeTheStart) {
    Write("tide");
    EXPECT_TRUE(FAILED(Seek(stream_, -5, STREAM_SEEK_CUR)));
    EXPECT_TRUE(FAILED(Seek(stream_, 0, 7)));
    Seek(stream_, 0, STREAM_SEEK_SET);
    EXPECT_EQ(Read(stream_, 4), "tide");
}

TEST_F(MemoryStream, CopiesToAnother) {
    Write(std::string(10000, 'a') + "end");
    Seek(stream_, 9998, STREAM_SEEK_SET);
    IStream* target = nullptr;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &target), S_OK);
    ULARGE_INTEGER all, read, written;
    all.QuadPart = 0xFFFFFFFFu;
    EXPECT_EQ(stream_->CopyTo(target, all, &read, &written), S_OK);
    EXPECT_EQ(read.QuadPart, 5u);
    EXPECT_EQ(written.QuadPart, 5u);
    Seek(target, 0, STREAM_SEEK_SET);
    EXPECT_EQ(Read(target, 10), "aaend");
    target->Release();
}

TEST_F(MemoryStream, ACloneSharesTheBytesAndHasItsOwnPosition) {
    Write("tide");
    IStream* clone = nullptr;
    ASSERT_EQ(stream_->Clone(&clone), S_OK);
    Seek(clone, 1, STREAM_SEEK_SET);
    Write("s");
    EXPECT_EQ(Read(clone, 10), "ides");
    EXPECT_EQ(clone->Release(), 0u);
}

TEST_F(MemoryStream, AnswersToItsInterfacesAlone) {
    for (const IID* iid : {&IID_IUnknown, &IID_ISequentialStream, &IID_IStream}) {
        void* object = nullptr;
        EXPECT_EQ(stream_->QueryInterface(*iid, &object), S_OK);
        EXPECT_EQ(object, stream_);
        stream_->Release();
    }
    void* object = stream_;
    EXPECT_EQ(stream_->QueryInterface(IID_IDispatch, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST(StreamOnMemory, LeavesTheCallersBlockToTheCaller) {
    HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, 4);
    std::memcpy(GlobalLock(memory), "tide", 4);
    GlobalUnlock(memory);
    IStream* stream = nullptr;
    ASSERT_EQ(CreateStreamOnHGlobal(memory, FALSE, &stream), S_OK);
    char bytes[4] = {};
    EXPECT_EQ(stream->Read(bytes, 4, nullptr), S_OK);
    EXPECT_EQ(std::string(bytes, 4), "tide");
    stream->Release();
    EXPECT_EQ(std::memcmp(GlobalLock(memory), "tide", 4), 0);
    GlobalUnlock(memory);
    GlobalFree(memory);
}

}  // namespace
