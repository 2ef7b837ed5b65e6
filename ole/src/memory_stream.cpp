#include <ole/stream.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

namespace {

// The bytes that a stream and its clones share: the first `size` of a moveable block.
struct SharedBytes {
    HGLOBAL memory;
    SIZE_T size;
    bool freeMemory;
    std::atomic<ULONG> streams{1};

    // The block doubles, so that many small writes cost no more than one large one.
    bool Reserve(ULONGLONG needed) {
        const SIZE_T room = GlobalSize(memory);
        if (needed <= room) return true;
        if (needed > std::numeric_limits<SIZE_T>::max() / 2) return false;
        const SIZE_T doubled = std::max<SIZE_T>(2 * room, 64);
        return GlobalReAlloc(memory, std::max<SIZE_T>(doubled, static_cast<SIZE_T>(needed)), GMEM_MOVEABLE) !=
               nullptr;
    }

    bool Resize(ULONGLONG newSize) {
        if (!Reserve(newSize)) return false;
        const SIZE_T grown = static_cast<SIZE_T>(newSize);
        if (grown > size) {
            std::memset(static_cast<char*>(GlobalLock(memory)) + size, 0, grown - size);
            GlobalUnlock(memory);
        }
        size = grown;
        return true;
    }

    void Release() {
        if (--streams != 0) return;
        if (freeMemory) GlobalFree(memory);
        delete this;
    }
};

// Answered by this class alone, and unknown to anybody else.
constexpr IID kMemoryStream = {0x5b0a3b5e, 0x7d0c, 0x4e5f, {0x9a, 0x31, 0x6e, 0x1f, 0x52, 0xc7, 0x08, 0xd4}};

class MemoryStream final : public IStream {
public:
    // Takes over one count of `bytes`.
    MemoryStream(SharedBytes* bytes, ULONGLONG position) : bytes_(bytes), position_(position) {}

    HGLOBAL Memory() const { return bytes_->memory; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG count, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG count, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) override;
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override;

    // Every write takes effect at once, and nobody else is there to be locked out.
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Revert() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return STG_E_INVALIDFUNCTION;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return STG_E_INVALIDFUNCTION;
    }

private:
    ~MemoryStream() { bytes_->Release(); }
    ULONG Available(ULONGLONG limit) const;

    std::atomic<ULONG> references_{1};
    SharedBytes* bytes_;
    ULONGLONG position_;
};

HRESULT MemoryStream::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    const bool known =
        iid == IID_IUnknown || iid == IID_ISequentialStream || iid == IID_IStream || iid == kMemoryStream;
    *object = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG MemoryStream::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

// Bytes from the position on, at most `limit`.
ULONG MemoryStream::Available(ULONGLONG limit) const {
    if (position_ >= bytes_->size) return 0;
    constexpr ULONGLONG kMost = std::numeric_limits<ULONG>::max();
    return static_cast<ULONG>(std::min({ULONGLONG{bytes_->size} - position_, limit, kMost}));
}

HRESULT MemoryStream::Read(void* bytes, ULONG count, ULONG* read) {
    if (read != nullptr) *read = 0;
    if (bytes == nullptr) return STG_E_INVALIDPOINTER;
    const ULONG taken = Available(count);
    if (taken != 0) {
        std::memcpy(bytes, static_cast<const char*>(GlobalLock(bytes_->memory)) + position_, taken);
        GlobalUnlock(bytes_->memory);
    }
    position_ += taken;
    if (read != nullptr) *read = taken;
    return S_OK;
}

HRESULT MemoryStream::Write(const void* bytes, ULONG count, ULONG* written) {
    if (written != nullptr) *written = 0;
    if (bytes == nullptr) return STG_E_INVALIDPOINTER;
    if (count == 0) return S_OK;
    const ULONGLONG end = position_ + count;
    if (end < position_ || (end > bytes_->size && !bytes_->Resize(end))) return STG_E_MEDIUMFULL;
    std::memcpy(static_cast<char*>(GlobalLock(bytes_->memory)) + position_, bytes, count);
    GlobalUnlock(bytes_->memory);
    position_ = end;
    if (written != nullptr) *written = count;
    return S_OK;
}

HRESULT MemoryStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) {
    ULONGLONG base = 0;
    switch (origin) {
        case STREAM_SEEK_SET: break;
        case STREAM_SEEK_CUR: base = position_; break;
        case STREAM_SEEK_END: base = bytes_->size; break;
        default: return STG_E_INVALIDFUNCTION;
    }
    const auto offset = static_cast<ULONGLONG>(move.QuadPart);
    const bool back = move.QuadPart < 0;
    if (back ? 0 - offset > base : base + offset < base) return STG_E_INVALIDFUNCTION;
    position_ = base + offset;
    if (position != nullptr) position->QuadPart = position_;
    return S_OK;
}

HRESULT MemoryStream::SetSize(ULARGE_INTEGER size) {
    return bytes_->Resize(size.QuadPart) ? S_OK : STG_E_MEDIUMFULL;
}

HRESULT MemoryStream::CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                             ULARGE_INTEGER* written) {
    if (target == nullptr) return STG_E_INVALIDPOINTER;
    HRESULT result = S_OK;
    ULONGLONG done = 0;
    ULONGLONG stored = 0;
    // By pieces through a buffer: the target may be a clone, whose writes move the block.
    char buffer[4096];
    while (SUCCEEDED(result) && done < count.QuadPart) {
        ULONG piece = static_cast<ULONG>(std::min<ULONGLONG>(sizeof buffer, count.QuadPart - done));
        Read(buffer, piece, &piece);
        if (piece == 0) break;
        ULONG put = 0;
        result = target->Write(buffer, piece, &put);
        done += piece;
        stored += put;
    }
    if (read != nullptr) read->QuadPart = done;
    if (written != nullptr) written->QuadPart = stored;
    return result;
}

HRESULT MemoryStream::Stat(STATSTG* status, DWORD) {
    if (status == nullptr) return STG_E_INVALIDPOINTER;
    *status = {};
    status->type = STGTY_STREAM;
    status->cbSize.QuadPart = bytes_->size;
    return S_OK;
}

HRESULT MemoryStream::Clone(IStream** clone) {
    if (clone == nullptr) return STG_E_INVALIDPOINTER;
    *clone = new (std::nothrow) MemoryStream(bytes_, position_);
    if (*clone == nullptr) return E_OUTOFMEMORY;
    ++bytes_->streams;
    return S_OK;
}

}  // namespace

HRESULT CreateStreamOnHGlobal(HGLOBAL memory, BOOL freeMemory, IStream** stream) {
    if (stream == nullptr) return E_INVALIDARG;
    *stream = nullptr;
    const HGLOBAL block = memory != nullptr ? memory : GlobalAlloc(GMEM_MOVEABLE, 0);
    if (block == nullptr) return E_OUTOFMEMORY;
    auto* const bytes = new (std::nothrow) SharedBytes{block, GlobalSize(block), freeMemory != FALSE};
    if (bytes != nullptr) *stream = new (std::nothrow) MemoryStream(bytes, 0);
    if (*stream != nullptr) return S_OK;
    delete bytes;
    if (memory == nullptr) GlobalFree(block);
    return E_OUTOFMEMORY;
}

HRESULT GetHGlobalFromStream(IStream* stream, HGLOBAL* memory) {
    if (stream == nullptr || memory == nullptr) return E_INVALIDARG;
    void* own = nullptr;
    if (FAILED(stream->QueryInterface(kMemoryStream, &own))) return E_INVALIDARG;
    auto* const memoryStream = static_cast<MemoryStream*>(own);
    *memory = memoryStream->Memory();
    memoryStream->Release();
    return S_OK;
}
