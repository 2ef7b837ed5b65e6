#pragma once

#include <map>
#include <optional>
#include <string>

#include "connection.h"
#include "page_activity.h"

namespace QuillLive {

// A page in the browser, with its frames. Frames from other origins live in processes of their own, and are
// spoken to in sessions of their own.
//
// Operations that return a string return what is wrong, in words for people, or nothing.
class LivePage {
public:
    struct Patience {
        Clock::duration timeout{};            // for the answer, and for the page to come to rest
        std::optional<Clock::duration> wait;  // if set, how long to wait from the answer on, whatever happens
    };
    struct Frame {
        std::string session;
        std::string parent;  // the frame around it
    };

    // Takes the connection's events. The connection outlives the page.
    explicit LivePage(Connection& connection);
    LivePage(const LivePage&) = delete;  // events find their way by an address
    LivePage& operator=(const LivePage&) = delete;

    // Opens an empty page, once the browser answers.
    std::string Open();

    // Loads the document at `url` and waits. `at_rest` is false when the page was still busy at the timeout.
    std::string Load(const std::string& url, const Patience& patience, bool& at_rest);

    const std::string& MainFrame() const { return main_frame_; }
    const std::string& MainSession() const { return session_; }

    // The frames in sessions of their own, by frame.
    const std::map<std::string, Frame>& FramesElsewhere() const { return elsewhere_; }

private:
    std::string CallBrowser(const std::string& session, const char* method, Json parameters, Json& result);
    void SetUp(const std::string& session);
    void Handle(const Connection::Event& event);
    void Attached(const Json& parameters);
    void Detached(const std::string& session);
    std::string Navigate(const std::string& url, Clock::duration timeout);
    std::string WhatHappened(Connection::Outcome outcome, const std::string& when_time_is_up) const;

    Connection& connection_;
    PageActivity activity_;
    std::string main_frame_;
    std::string session_;
    std::map<std::string, Frame> elsewhere_;
    bool crashed_ = false;
};

}  // namespace QuillLive
