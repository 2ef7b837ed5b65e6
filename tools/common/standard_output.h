#pragma once

#include <string>

namespace QuillTool {

// Standard output. A reader that has closed its end of a pipe wants no more and is no problem.
class StandardOutput {
public:
    // False when nothing more can be written.
    bool Write(const std::string& bytes);

    // Writes what is still held back. False as above.
    bool Flush();

    // What went wrong, in words for people, or nothing.
    const std::string& Problem() const { return problem_; }

private:
    bool Check(bool written);

    std::string problem_;
};

}  // namespace QuillTool
