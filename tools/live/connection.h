#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "message_json.h"
#include "stop_signals.h"

namespace QuillLive {

using Clock = std::chrono::steady_clock;

// The DevTools protocol (https://chromedevtools.github.io/devtools-protocol/) over two pipes: JSON messages,
// a NUL behind each. A pipe needs no port that others could connect to, and no WebSocket.
//
// A session is the conversation with one page or frame; without a name it is the one with the browser.
class Connection {
public:
    // An answer: its result, or what the browser says is wrong (`code`, `message`).
    struct Answer {  // NOLINT(bugprone-exception-escape): an empty Json takes no memory
        bool good = false;
        Json value;
    };
    struct Event {
        std::string method;
        std::string session;
        Json parameters;
    };
    enum class Outcome { kDone, kTimeUp, kClosed, kStopped };

    // Both pipes stay the caller's, open while the connection lives.
    Connection(int commands, int answers, const StopSignals& signals);
    Connection(const Connection&) = delete;  // answers find their way by an address
    Connection& operator=(const Connection&) = delete;

    // What happens with each event. It may send, but not wait.
    void OnEvent(std::function<void(const Event&)> handler) { handler_ = std::move(handler); }

    // Sends a command; nothing is written before the next wait. `answered` is called during a wait, if ever.
    void Send(const std::string& session, const char* method, Json parameters = Json::object(),
              std::function<void(Answer)> answered = {});

    // Handles messages until `done()`: kTimeUp when the deadline comes first, kClosed when the browser has
    // gone, kStopped when a signal asks this process to end. The last two come again from every later wait.
    Outcome Wait(const std::function<bool()>& done, Clock::time_point deadline);

    // Sends and waits for the answer, which is kept in `answer` when the outcome is kDone.
    Outcome Call(const std::string& session, const char* method, Json parameters, Clock::time_point deadline,
                 Answer& answer);

private:
    bool Move(Clock::time_point deadline);
    bool Read();
    bool Write();
    void HandleMessages(std::size_t searched);
    void Handle(std::string_view message);

    const int commands_;
    const int answers_;
    const StopSignals& signals_;
    std::function<void(const Event&)> handler_;
    std::map<long, std::function<void(Answer)>> waiting_;  // by the command's number
    long last_ = 0;
    std::string incoming_;  // the beginning of a message
    std::string outgoing_;
    bool closed_ = false;
};

}  // namespace QuillLive
