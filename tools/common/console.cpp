#include "console.h"

#include <cstdio>

namespace QuillTool {

namespace {

constexpr std::size_t kBarCells = 30;
constexpr std::chrono::milliseconds kBarInterval(100);

void Write(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

// A file name must not be able to move the cursor of the terminal.
std::string Printable(std::string name) {
    for (char& c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) c = '?';
    }
    return name;
}

std::string Bar(std::size_t done, std::size_t total) {
    const std::size_t filled = kBarCells * done / total;
    std::string bar = "\r[";
    bar.append(filled, '#').append(kBarCells - filled, ' ').append("] ");
    return bar + std::to_string(done) + " of " + std::to_string(total) + " pages";
}

}  // namespace

void Console::Error(const std::string& name, const std::string& reason) {
    had_errors_ = true;
    Say(name, reason);
}

void Console::Note(const std::string& name, const std::string& text) {
    Say(name, text);
}

void Console::Say(const std::string& name, const std::string& text) {
    ClearBar();
    Write(program_ + (": " + Printable(name)) + ": " + text + "\n");
}

void Console::Progress(std::size_t done, std::size_t total) {
    const auto now = std::chrono::steady_clock::now();
    if (!bar_allowed_ || now - drawn_ < kBarInterval) return;
    drawn_ = now;
    const std::string bar = Bar(done, total);  // never shorter than the one before
    bar_width_ = bar.size() - 1;
    Write(bar);
}

void Console::ClearBar() {
    if (bar_width_ == 0) return;
    Write(std::string("\r").append(bar_width_, ' ').append("\r"));
    bar_width_ = 0;
}

}  // namespace QuillTool
