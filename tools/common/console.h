#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace QuillTool {

// Standard error: messages about inputs and the progress bar. One thread uses it.
class Console {
public:
    // `program` is the name that messages begin with.
    explicit Console(const char* program) : program_(program) {}
    Console(const Console&) = delete;  // two would draw over each other
    Console& operator=(const Console&) = delete;
    ~Console() { ClearBar(); }

    // "PROGRAM: NAME: REASON". Control characters of the name are shown as "?".
    void Error(const std::string& name, const std::string& reason);
    bool HadErrors() const { return had_errors_; }

    // The same for what is worth saying and no error.
    void Note(const std::string& name, const std::string& text);

    // Draws how many of `total` pages are done, if bars were allowed, not more often than a person sees.
    void AllowBar() { bar_allowed_ = true; }
    void Progress(std::size_t done, std::size_t total);

private:
    void Say(const std::string& name, const std::string& text);
    void ClearBar();

    const char* program_;
    bool had_errors_ = false;
    bool bar_allowed_ = false;
    std::size_t bar_width_ = 0;  // characters on the line; 0: no bar is shown
    std::chrono::steady_clock::time_point drawn_{};
};

}  // namespace QuillTool
