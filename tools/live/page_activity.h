#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>

#include "connection.h"

namespace QuillLive {

// Follows what a page loads, in order to say when it has come to rest: its document is loaded, no frame is
// being loaded, and half a second has passed without a request under way.
//
// Requests that bring no text, or never end by nature (video, event streams, pings), do not count.
class PageActivity {
public:
    // `frame` is the page's own.
    void Begin(const std::string& frame) { main_frame_ = frame; }

    // Takes every event of the page's sessions; `now` is never earlier than before.
    void Handle(const Connection::Event& event, Clock::time_point now);

    // `session` has ended, and with it all that went on in it.
    void SessionEnded(const std::string& session, Clock::time_point now);

    bool AtRest(Clock::time_point now) const;

private:
    void HandleFrame(const std::string& event, const std::string& session, const Json& parameters);
    void HandleRequest(const std::string& event, const std::string& session, const Json& parameters);

    std::string main_frame_;
    std::string main_loader_;  // of the document that the main frame shows
    bool main_loaded_ = false;
    std::map<std::string, std::string> loading_;              // frames, with the session that spoke of them
    std::set<std::pair<std::string, std::string>> requests_;  // session and request
    Clock::time_point busy_{};                                // when something was last under way
};

}  // namespace QuillLive
