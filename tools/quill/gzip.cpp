#include "gzip.h"

#include "page_limit.h"

#include <algorithm>
#include <limits>
#define ZLIB_CONST  // zlib promises not to write into its input
#include <zlib.h>

namespace QuillTool {

namespace {

constexpr std::size_t kFirstRoom = std::size_t{1} << 16;

class Inflater {
public:
    explicit Inflater(std::string_view packed) {
        stream_.next_in = reinterpret_cast<const Bytef*>(packed.data());
        stream_.avail_in = static_cast<uInt>(packed.size());
        constexpr int kGzipOnly = 16;
        if (inflateInit2(&stream_, kGzipOnly + MAX_WBITS) != Z_OK) Stop("not enough memory");
    }
    Inflater(const Inflater&) = delete;  // zlib's state points into itself
    Inflater& operator=(const Inflater&) = delete;
    ~Inflater() { inflateEnd(&stream_); }

    // Fills `room` bytes at `target`, or fewer at the end. Returns how many.
    std::size_t Read(char* target, std::size_t room) {
        const auto asked = static_cast<uInt>(std::min<std::size_t>(room, std::numeric_limits<uInt>::max()));
        stream_.next_out = reinterpret_cast<Bytef*>(target);
        stream_.avail_out = asked;
        while (!ended_ && stream_.avail_out != 0) Step();
        return asked - stream_.avail_out;
    }

    bool Ended() const { return ended_; }
    const std::string& Problem() const { return problem_; }

private:
    void Step() {
        switch (inflate(&stream_, Z_NO_FLUSH)) {
            case Z_OK: return;
            case Z_STREAM_END: return NextMember();
            case Z_BUF_ERROR: return Stop("truncated gzip data");
            case Z_MEM_ERROR: return Stop("not enough memory");
            default: return Stop("damaged gzip data");
        }
    }

    void NextMember() {
        const std::string_view rest(reinterpret_cast<const char*>(stream_.next_in), stream_.avail_in);
        if (!IsGzip(rest) || inflateReset(&stream_) != Z_OK) ended_ = true;
    }

    void Stop(const char* problem) {
        ended_ = true;
        problem_ = problem;
    }

    z_stream stream_{};
    bool ended_ = false;
    std::string problem_;
};

// The size of what `packed` holds, or some number above `most`.
std::size_t UnpackedSize(std::string_view packed, std::size_t most) {
    Inflater inflater(packed);
    std::string room(kFirstRoom, '\0');
    std::size_t size = 0;
    while (!inflater.Ended() && size <= most) size += inflater.Read(room.data(), room.size());
    return size;
}

}  // namespace

bool IsGzip(std::string_view bytes) {
    return bytes.substr(0, 3) == "\x1F\x8B\x08";
}

std::string Gunzip(std::string_view packed, std::string& bytes, std::size_t most) {
    Inflater inflater(packed);
    std::size_t size = 0;
    bytes.resize(kFirstRoom);
    for (;;) {
        size += inflater.Read(bytes.data() + size, bytes.size() - size);
        if (inflater.Ended()) break;
        if (bytes.size() < kUncountedRoom) {
            bytes.resize(bytes.size() * 2);
            continue;
        }
        const std::size_t total = UnpackedSize(packed, most);
        if (total > most) return kTooLarge;
        bytes.resize(total + 1);  // one more, so that the end is seen
    }
    bytes.resize(size);
    return inflater.Problem();
}

}  // namespace QuillTool
