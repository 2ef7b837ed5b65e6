#pragma once

#include <optional>
#include <string>
#include <vector>

namespace QuillLive {

// A document as the browser had it when it was read. All text is UTF-8.
struct LiveDocument {
    std::string url;
    std::string mime_type;
    std::optional<std::string> source;  // what the server sent; where it is wanted and known
    std::optional<std::string> body;    // markup of the body as it stood; none where there is no body
    std::vector<LiveDocument> frames;   // the documents embedded in this one, in document order
};

}  // namespace QuillLive
