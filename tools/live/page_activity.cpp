#include "page_activity.h"

namespace QuillLive {

namespace {

constexpr std::chrono::milliseconds kRest(500);

// Documents are followed as frames.
bool Counts(const std::string& type) {
    static const std::set<std::string> kPassedOver = {"Document", "EventSource",        "Media",
                                                      "Ping",     "CSPViolationReport", "Prefetch"};
    return kPassedOver.count(type) == 0;
}

}  // namespace

void PageActivity::Handle(const Connection::Event& event, Clock::time_point now) {
    const bool was_busy = !loading_.empty() || !requests_.empty();
    if (event.method.starts_with("Page.")) HandleFrame(event.method, event.session, event.parameters);
    if (event.method.starts_with("Network.")) HandleRequest(event.method, event.session, event.parameters);
    if (was_busy || !loading_.empty() || !requests_.empty()) busy_ = now;
}

void PageActivity::HandleFrame(const std::string& event, const std::string& session, const Json& parameters) {
    const std::string frame = Text(parameters, "frameId");
    if (event == "Page.frameStartedLoading") {
        loading_[frame] = session;
    } else if (event == "Page.frameStoppedLoading" ||
               // A frame that is swapped goes on in a session of its own.
               (event == "Page.frameDetached" && Text(parameters, "reason") != "swap")) {
        loading_.erase(frame);
    } else if (event == "Page.frameNavigated" && Text(Member(parameters, "frame"), "id") == main_frame_) {
        main_loader_ = Text(Member(parameters, "frame"), "loaderId");
        main_loaded_ = false;
    } else if (event == "Page.lifecycleEvent" && Text(parameters, "name") == "load" && frame == main_frame_ &&
               Text(parameters, "loaderId") == main_loader_) {
        main_loaded_ = true;
    }
}

void PageActivity::HandleRequest(const std::string& event, const std::string& session,
                                 const Json& parameters) {
    const std::pair<std::string, std::string> request(session, Text(parameters, "requestId"));
    if (event == "Network.requestWillBeSent") {
        if (Counts(Text(parameters, "type"))) requests_.insert(request);
    } else if (event == "Network.loadingFinished" || event == "Network.loadingFailed") {
        requests_.erase(request);
    }
}

void PageActivity::SessionEnded(const std::string& session, Clock::time_point now) {
    std::erase_if(loading_, [&](const auto& frame) { return frame.second == session; });
    std::erase_if(requests_, [&](const auto& request) { return request.first == session; });
    busy_ = now;
}

bool PageActivity::AtRest(Clock::time_point now) const {
    return main_loaded_ && loading_.empty() && requests_.empty() && now - busy_ >= kRest;
}

}  // namespace QuillLive
