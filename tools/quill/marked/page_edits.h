#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace QuillTool {

// Changes to a page that leave the rest of it byte for byte as it is.
class PageEdits {
public:
    // Of insertions at one place the first one stands first.
    void Insert(std::size_t position, std::string text) { Replace(position, 0, std::move(text)); }
    // What is replaced must not overlap.
    void Replace(std::size_t position, std::size_t length, std::string text) {
        edits_.push_back({position, length, std::move(text)});
    }

    std::string Apply(std::string_view page);

private:
    struct Edit {
        std::size_t position;
        std::size_t length;
        std::string text;
    };

    std::vector<Edit> edits_;
};

}  // namespace QuillTool
