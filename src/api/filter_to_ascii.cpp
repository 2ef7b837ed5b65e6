#include "filter_to_ascii.h"

// A window of three bytes moves over the source. Each step looks at which of its bytes are ASCII (a) and
// which are high (H), writes some of them, and moves on by one to three bytes:
//
//   a a a   write the first           1         H a a   drop        1
//   a a H   write the first two       2         H H a   drop        2
//   a H .   drop                      2         H . H   drop        3
//
// so that an ASCII byte next to high ones is kept only where it cannot belong to them.

namespace QuillNS {
namespace {

constexpr unsigned int kWidth = 3;
constexpr unsigned char kFiller = 0x20;  // stands where the source has no byte any more
constexpr unsigned char kLastAscii = 0x7F;

class Window {
public:
    Window(ZOT::BinaryStreamBuf& source, ZOT::BinaryStreamBuf& target) : source_(source), target_(target) {
        Fill(0);
    }

    void Step();
    void Finish();

private:
    bool Ascii(unsigned int place) const { return bytes_[place] <= kLastAscii; }
    void Write(unsigned int place) { target_.SafePut(&bytes_[place], 1); }
    void Advance(unsigned int count);
    void Fill(unsigned int from);

    ZOT::BinaryStreamBuf& source_;
    ZOT::BinaryStreamBuf& target_;
    unsigned char bytes_[kWidth];
};

void Window::Step() {
    if (Ascii(0) && !Ascii(1)) return Advance(2);
    if (Ascii(0)) {
        Write(0);
        if (Ascii(2)) return Advance(1);
        Write(1);
        return Advance(2);
    }
    if (!Ascii(2)) return Advance(3);
    Advance(Ascii(1) ? 1 : 2);
}

// What stands in the window when the source has ended.
void Window::Finish() {
    if (Ascii(0) && Ascii(1)) {
        Write(0);
        Write(1);
        if (Ascii(2)) Write(2);
    } else if (Ascii(0)) {
        if (Ascii(2)) Write(2);
    } else if (Ascii(1) && Ascii(2)) {
        Write(1);
        Write(2);
    }
}

void Window::Advance(unsigned int count) {
    for (unsigned int place = count; place < kWidth; ++place) bytes_[place - count] = bytes_[place];
    Fill(kWidth - count);
}

void Window::Fill(unsigned int from) {
    for (unsigned int place = from; place < kWidth; ++place) {
        bytes_[place] = kFiller;
        if (!source_.vEndOfFile()) source_.SafeGet(&bytes_[place], 1);
    }
}

void Rewind(ZOT::BinaryStreamBuf& source, ZOT::BinaryStreamBuf& target) {
    source.SeekG(0, ZOT::kFromBegin);
    target.SeekG(0, ZOT::kFromBegin);
}

}  // namespace

void FilterToAscii(ZOT::BinaryStream& source, ZOT::BinaryStream& target) {
    ZOT::BinaryStreamBuf& from = *source.Buffer();
    ZOT::BinaryStreamBuf& to = *target.Buffer();
    Rewind(from, to);
    Window window(from, to);
    while (!from.vEndOfFile()) window.Step();
    window.Finish();
    Rewind(from, to);
}

}  // namespace QuillNS
