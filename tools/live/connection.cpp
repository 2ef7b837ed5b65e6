#include "connection.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace QuillLive {

namespace {

constexpr std::size_t kMostIncoming = std::size_t{1} << 30;  // bytes of one message
constexpr std::size_t kReadSize = std::size_t{1} << 16;
constexpr std::chrono::milliseconds kLongestPoll(20);  // what a wait is for may come by time alone

timespec ToTimespec(Clock::duration time) {
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
    timespec result = {};
    result.tv_nsec = std::max<decltype(result.tv_nsec)>(0, nanoseconds);  // less than a second
    return result;
}

bool WouldBlock(int error) {
    return error == EAGAIN || error == EINTR;
}

}  // namespace

Connection::Connection(int commands, int answers, const StopSignals& signals)
    : commands_(commands), answers_(answers), signals_(signals) {
    for (const int pipe : {commands_, answers_}) fcntl(pipe, F_SETFL, O_NONBLOCK);
}

void Connection::Send(const std::string& session, const char* method, Json parameters,
                      std::function<void(Answer)> answered) {
    Json message = {{"id", ++last_}, {"method", method}, {"params", std::move(parameters)}};
    if (!session.empty()) message["sessionId"] = session;
    if (answered) waiting_.emplace(last_, std::move(answered));
    outgoing_ += message.dump(-1, ' ', false, Json::error_handler_t::replace);
    outgoing_ += '\0';
}

Connection::Outcome Connection::Wait(const std::function<bool()>& done, Clock::time_point deadline) {
    for (;;) {
        if (StopSignals::Raised() != 0) return Outcome::kStopped;
        if (done()) return Outcome::kDone;
        if (closed_) return Outcome::kClosed;
        if (Clock::now() >= deadline) return Outcome::kTimeUp;
        if (!Move(deadline)) closed_ = true;
    }
}

Connection::Outcome Connection::Call(const std::string& session, const char* method, Json parameters,
                                     Clock::time_point deadline, Answer& answer) {
    // Shared with an answer that comes when nobody waits for it any more.
    const auto kept = std::make_shared<std::pair<bool, Answer>>();
    Send(session, method, std::move(parameters), [kept](Answer got) { *kept = {true, std::move(got)}; });
    const Outcome outcome = Wait([&] { return kept->first; }, deadline);
    if (outcome == Outcome::kDone) answer = std::move(kept->second);
    return outcome;
}

// Writes and reads what goes without blocking. False when the pipes are closed.
bool Connection::Move(Clock::time_point deadline) {
    pollfd pipes[] = {{answers_, POLLIN, 0}, {commands_, POLLOUT, 0}};
    const timespec time = ToTimespec(std::min<Clock::duration>(deadline - Clock::now(), kLongestPoll));
    if (ppoll(pipes, outgoing_.empty() ? 1 : 2, &time, &signals_.WaitMask()) < 0) return errno == EINTR;
    if (pipes[1].revents != 0 && !Write()) return false;
    return pipes[0].revents == 0 || Read();
}

bool Connection::Write() {
    const ssize_t written = write(commands_, outgoing_.data(), outgoing_.size());
    if (written < 0) return WouldBlock(errno);
    outgoing_.erase(0, static_cast<std::size_t>(written));
    return true;
}

bool Connection::Read() {
    const std::size_t had = incoming_.size();
    if (had > kMostIncoming) return false;
    incoming_.resize(had + std::max(kReadSize, had / 2));
    const ssize_t got = read(answers_, incoming_.data() + had, incoming_.size() - had);
    incoming_.resize(had + (got > 0 ? static_cast<std::size_t>(got) : 0));
    if (got < 0) return WouldBlock(errno);
    if (got == 0) return false;
    HandleMessages(had);
    return true;
}

// The first `searched` bytes hold no end of a message.
void Connection::HandleMessages(std::size_t searched) {
    std::size_t begin = 0;
    for (std::size_t end = incoming_.find('\0', searched); end != std::string::npos;
         end = incoming_.find('\0', begin)) {
        Handle(std::string_view(incoming_).substr(begin, end - begin));
        begin = end + 1;
    }
    incoming_.erase(0, begin);
}

void Connection::Handle(std::string_view text) {
    Json message = ParseMessage(std::string(text));
    const Json& number = Member(message, "id");
    if (!number.is_number_integer()) {
        if (handler_)
            handler_({Text(message, "method"), Text(message, "sessionId"), Member(message, "params")});
        return;
    }
    const auto found = waiting_.find(number.get<long>());
    if (found == waiting_.end()) return;
    const auto answered = std::move(found->second);
    waiting_.erase(found);
    const bool good = message.contains("result");
    answered({good, Member(message, good ? "result" : "error")});
}

}  // namespace QuillLive
