#include "live_page.h"

#include <memory>
#include <utility>

namespace QuillLive {

namespace {

using namespace std::chrono_literals;

constexpr auto kTimeToStart = 60s;    // a browser on a busy machine that has never run before
constexpr int kKeptSource = 1 << 28;  // bytes of responses that the browser keeps

constexpr const char* kEnded = "the browser has ended";

std::string Milliseconds(Clock::duration time) {
    return std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()) + " ms";
}

}  // namespace

LivePage::LivePage(Connection& connection) : connection_(connection) {
    connection_.OnEvent([this](const Connection::Event& event) { Handle(event); });
}

std::string LivePage::Open() {
    Json result;
    std::string problem = CallBrowser({}, "Browser.setDownloadBehavior", {{"behavior", "deny"}}, result);
    if (!problem.empty()) return problem;
    problem = CallBrowser({}, "Target.createTarget", {{"url", "about:blank"}}, result);
    if (!problem.empty()) return problem;
    main_frame_ = Text(result, "targetId");
    activity_.Begin(main_frame_);
    problem =
        CallBrowser({}, "Target.attachToTarget", {{"targetId", main_frame_}, {"flatten", true}}, result);
    if (!problem.empty()) return problem;
    session_ = Text(result, "sessionId");
    SetUp(session_);
    return CallBrowser(session_, "Page.getFrameTree", Json::object(),
                       result);  // answered after all before it
}

std::string LivePage::Load(const std::string& url, const Patience& patience, bool& at_rest) {
    const Clock::time_point deadline = Clock::now() + patience.timeout;
    at_rest = true;
    std::string problem = Navigate(url, patience.timeout);
    if (!problem.empty()) return problem;
    const auto done = [&] { return crashed_ || (!patience.wait && activity_.AtRest(Clock::now())); };
    const Connection::Outcome outcome =
        connection_.Wait(done, patience.wait ? Clock::now() + *patience.wait : deadline);
    if (outcome == Connection::Outcome::kTimeUp) {
        at_rest = patience.wait.has_value();
        return {};
    }
    return WhatHappened(outcome, {});
}

// Returns when the first part of the document has come.
std::string LivePage::Navigate(const std::string& url, Clock::duration timeout) {
    const auto answer = std::make_shared<std::optional<Connection::Answer>>();
    connection_.Send(session_, "Page.navigate", {{"url", url}},
                     [answer](Connection::Answer got) { *answer = std::move(got); });
    const Connection::Outcome outcome =
        connection_.Wait([&] { return crashed_ || answer->has_value(); }, Clock::now() + timeout);
    std::string problem = WhatHappened(outcome, "no answer within " + Milliseconds(timeout));
    if (!problem.empty()) return problem;
    const auto& [good, value] = **answer;
    if (!good) return Text(value, "message");
    if (Flag(value, "isDownload")) return "a file to download, not a page";
    return Text(value, "errorText");
}

std::string LivePage::WhatHappened(Connection::Outcome outcome, const std::string& when_time_is_up) const {
    switch (outcome) {
        case Connection::Outcome::kDone: return crashed_ ? "the page has crashed" : "";
        case Connection::Outcome::kTimeUp: return when_time_is_up;
        case Connection::Outcome::kClosed: return kEnded;
        case Connection::Outcome::kStopped: return "stopped";
    }
    return {};
}

std::string LivePage::CallBrowser(const std::string& session, const char* method, Json parameters,
                                  Json& result) {
    Connection::Answer answer;
    const Connection::Outcome outcome =
        connection_.Call(session, method, std::move(parameters), Clock::now() + kTimeToStart, answer);
    std::string problem = WhatHappened(outcome, "the browser does not answer");
    if (problem.empty() && !answer.good) problem = "the browser: " + Text(answer.value, "message");
    result = std::move(answer.value);
    return problem;
}

void LivePage::SetUp(const std::string& session) {
    connection_.Send(session, "Inspector.enable");
    connection_.Send(session, "Page.enable");
    connection_.Send(session, "Page.setLifecycleEventsEnabled", {{"enabled", true}});
    connection_.Send(session, "Network.enable",
                     {{"maxTotalBufferSize", kKeptSource}, {"maxResourceBufferSize", kKeptSource}});
    // Frames from other origins wait until they are set up, so that nothing of them is missed.
    connection_.Send(session, "Target.setAutoAttach",
                     {{"autoAttach", true},
                      {"waitForDebuggerOnStart", true},
                      {"flatten", true},
                      {"filter", Json::array({{{"type", "iframe"}}})}});
    connection_.Send(session, "Runtime.runIfWaitingForDebugger");
}

void LivePage::Handle(const Connection::Event& event) {
    if (event.session.empty()) return;  // about the browser
    if (event.method == "Target.attachedToTarget") {
        Attached(event.parameters);
    } else if (event.method == "Target.detachedFromTarget") {
        Detached(Text(event.parameters, "sessionId"));
    } else if (event.method == "Page.javascriptDialogOpening") {
        connection_.Send(event.session, "Page.handleJavaScriptDialog", {{"accept", true}});
    } else if (event.method == "Inspector.targetCrashed") {
        crashed_ = crashed_ || event.session == session_;
    } else {
        activity_.Handle(event, Clock::now());
    }
}

void LivePage::Attached(const Json& parameters) {
    const std::string session = Text(parameters, "sessionId");
    const Json& target = Member(parameters, "targetInfo");
    elsewhere_[Text(target, "targetId")] = {session, Text(target, "parentFrameId")};
    SetUp(session);
}

void LivePage::Detached(const std::string& session) {
    std::erase_if(elsewhere_, [&](const auto& frame) { return frame.second.session == session; });
    activity_.SessionEnded(session, Clock::now());
}

}  // namespace QuillLive
