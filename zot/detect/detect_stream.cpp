#include <zot/detect_stream.h>

#include <algorithm>
#include <limits>

#include <ole/automation.h>
#include <zot/detect.h>
#include <zot/pool_buffer.h>

namespace {

constexpr std::size_t kFirstRead = 65536;  // bytes; the next ones double

bool ReadAll(IStream& stream, ZOT::PoolBuffer& bytes) {
    if (FAILED(stream.Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr))) return false;
    for (ULONG read = 1; read != 0;) {
        if (bytes.Size() == bytes.Capacity() && !bytes.Reserve(std::max(kFirstRead, 2 * bytes.Size())))
            return false;
        const std::size_t room = bytes.Capacity() - bytes.Size();
        const auto asked = static_cast<ULONG>(std::min<std::size_t>(room, std::numeric_limits<ULONG>::max()));
        if (FAILED(stream.Read(bytes.Data() + bytes.Size(), asked, &read)) || read > asked) return false;
        bytes.SetSize(bytes.Size() + read);
    }
    return true;
}

}  // namespace

int DetectCharset(IStream* stream, ZOT::CHARSET* charset) {
    ZOT::PoolBuffer bytes;
    if (stream == nullptr || charset == nullptr || !ReadAll(*stream, bytes)) return 1;
    *charset = ZOT::DetectEncoding(bytes.Data(), bytes.Size());
    return 0;
}
