#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "connection.h"
#include "live_document.h"
#include "live_page.h"

namespace QuillLive {

// Reads the documents of a page out of the browser, as they stand.
class PageReader {
public:
    // With `want_source` what the server sent is read too. The connection and the page outlive the reader.
    PageReader(Connection& connection, const LivePage& page, bool want_source)
        : connection_(connection), page_(page), want_source_(want_source) {}

    // Replaces `document` by the page's document with all frames in it. A frame that cannot be read is an
    // empty document; false when the page itself cannot be read.
    bool Read(LiveDocument& document);

private:
    struct Frame {
        std::string url;
        std::string mime_type;
        std::string loader;
        std::vector<std::string> children;  // those in the same session
    };

    bool ReadFrame(const std::string& frame, const std::string& session, unsigned int depth,
                   LiveDocument& document);
    bool ReadBody(const std::string& session, const Json& world, LiveDocument& document);
    void ReadSource(const std::string& session, const std::string& loader, LiveDocument& document);
    std::vector<std::string> ListFrames(const std::string& frame, const std::string& session,
                                        const Json& world);
    std::vector<std::string> FrameElements(const std::string& session, const Json& world);
    void LearnFrames(const std::string& session);

    bool Ask(const std::string& session, const char* method, Json parameters, Json& result);
    bool Evaluate(const std::string& session, const Json& world, const char* script, bool by_value,
                  Json& result);

    Connection& connection_;
    const LivePage& page_;
    const bool want_source_;
    Clock::time_point deadline_{};
    std::map<std::string, Frame> frames_;
    std::set<std::string> known_sessions_;
    std::size_t frames_read_ = 0;
};

}  // namespace QuillLive
