#pragma once

#include <cstdio>
#include <string>

namespace html5lib {

// Counts the cases and prints those that fail.
class Report {
public:
    // Prints at most `failures` of the failed cases.
    explicit Report(unsigned failures) : printable_(failures) {}

    // One case: what was parsed, what should come out and what did.
    void Compare(const std::string& name, const std::string& input, const std::string& expected,
                 const std::string& actual) {
        if (expected == actual) {
            ++passed_;
            return;
        }
        ++failed_;
        if (printable_ == 0) return;
        --printable_;
        std::printf("FAILED %s\n--- input\n%s\n--- expected\n%s\n--- got\n%s\n\n", name.c_str(),
                    Visible(input).c_str(), Visible(expected).c_str(), Visible(actual).c_str());
    }

    void Skip() { ++skipped_; }

    // Prints the closing line and gives the exit code of the program.
    int Close() const {
        std::printf("%u passed, %u failed, %u skipped\n", passed_, failed_, skipped_);
        return failed_ == 0 ? 0 : 1;
    }

private:
    // Controls as \xNN, so that a terminal shows them.
    static std::string Visible(const std::string& text) {
        std::string visible;
        for (const char c : text) {
            const unsigned byte = static_cast<unsigned char>(c);
            if (byte >= 0x20 || c == '\n') {
                visible += c;
                continue;
            }
            char escape[5];
            std::snprintf(escape, sizeof escape, "\\x%02X", byte);
            visible += escape;
        }
        return visible;
    }

    unsigned printable_;
    unsigned passed_ = 0;
    unsigned failed_ = 0;
    unsigned skipped_ = 0;
};

}  // namespace html5lib
