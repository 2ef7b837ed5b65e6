#pragma once

#include <ole/global_memory.h>
#include <ole/unknown.h>

// Streams of bytes with one position for reading and writing.

typedef struct {
    LPOLESTR pwcsName;  // null with STATFLAG_NONAME
    DWORD type;         // STGTY_STREAM
    ULARGE_INTEGER cbSize;
    FILETIME mtime;
    FILETIME ctime;
    FILETIME atime;
    DWORD grfMode;
    DWORD grfLocksSupported;
    CLSID clsid;
    DWORD grfStateBits;
    DWORD reserved;
} STATSTG;

enum { STGTY_STREAM = 2 };
enum { STATFLAG_DEFAULT = 0, STATFLAG_NONAME = 1 };
enum { STREAM_SEEK_SET = 0, STREAM_SEEK_CUR = 1, STREAM_SEEK_END = 2 };

#ifdef __cplusplus

struct ISequentialStream : IUnknown {
    // Fewer bytes than asked for, with a success, at the end. The counts may be null.
    virtual HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG count, ULONG* read) = 0;
    virtual HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG count, ULONG* written) = 0;
};

struct IStream : ISequentialStream {
    // A position behind the end is allowed: a write there fills the gap. `position` may be null.
    virtual HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                                             ULARGE_INTEGER* written) = 0;
    virtual HRESULT STDMETHODCALLTYPE Commit(DWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Revert() = 0;
    virtual HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count,
                                                   DWORD type) = 0;
    virtual HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD flags) = 0;
    // A second stream on the same bytes with a position of its own.
    virtual HRESULT STDMETHODCALLTYPE Clone(IStream** clone) = 0;
};

#else
typedef struct IStream IStream;
#endif

OLE_C_BEGIN

OLE_API extern const IID IID_ISequentialStream;
OLE_API extern const IID IID_IStream;

// A stream over a moveable block of memory, which grows with it; null makes a new, empty block. With
// `freeMemory` the block is freed with the last stream on it. The stream and its clones are used by one
// thread at a time.
OLE_API HRESULT CreateStreamOnHGlobal(HGLOBAL memory, BOOL freeMemory, IStream** stream);

// The block behind a stream made by CreateStreamOnHGlobal; E_INVALIDARG for any other stream. The block stays
// the stream's and may be larger than its content: ask the stream for the size.
OLE_API HRESULT GetHGlobalFromStream(IStream* stream, HGLOBAL* memory);

OLE_C_END
