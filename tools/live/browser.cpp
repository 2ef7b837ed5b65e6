#include "browser.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <spawn.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace QuillLive {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Where --remote-debugging-pipe has the browser look for its pipes.
constexpr int kCommandsInBrowser = 3;
constexpr int kAnswersInBrowser = 4;
constexpr int kFirstFreeDescriptor = 10;

constexpr auto kTimeToEnd = 5s;     // for the browser, once nobody talks to it
constexpr auto kTimeToFollow = 2s;  // for processes that it leaves behind
constexpr auto kLookAgain = 5ms;

std::string Reason(int error) {
    return std::generic_category().message(error);
}

void Close(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

// A pipe that children do not inherit, clear of the numbers that the browser's ends get.
bool MakePipe(int& read_end, int& write_end) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return false;
    read_end = fcntl(ends[0], F_DUPFD_CLOEXEC, kFirstFreeDescriptor);
    write_end = fcntl(ends[1], F_DUPFD_CLOEXEC, kFirstFreeDescriptor);
    for (int& end : ends) Close(end);
    return read_end >= 0 && write_end >= 0;
}

std::vector<std::string> CommandLine(const std::string& program, const std::string& profile) {
    std::vector<std::string> line = {program,
                                     "--headless",
                                     "--remote-debugging-pipe",
                                     "--user-data-dir=" + profile,
                                     "--disable-background-networking",
                                     "--disable-component-update",
                                     "--disable-gpu",
                                     "--disable-quic",
                                     "--disable-sync",
                                     "--mute-audio",
                                     "--no-default-browser-check",
                                     "--no-first-run"};
    if (geteuid() == 0) line.emplace_back("--no-sandbox");  // it refuses to run as root otherwise
    return line;
}

// The children of this process, the ended ones too of which it has not taken note.
std::vector<pid_t> Children() {
    std::ifstream list("/proc/thread-self/children");
    std::vector<pid_t> children;
    for (pid_t child = 0; list >> child;) children.push_back(child);
    return children;
}

// This process's environment, but with another folder for temporary files.
std::vector<std::string> Environment(const std::string& temporary) {
    constexpr std::string_view kVariable = "TMPDIR=";
    std::vector<std::string> result = {std::string(kVariable) + temporary};
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (!std::string_view(*variable).starts_with(kVariable)) result.emplace_back(*variable);
    }
    return result;
}

// As exec takes them; they point into `strings`.
std::vector<char*> Pointers(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (std::string& string : strings) pointers.push_back(string.data());
    pointers.push_back(nullptr);
    return pointers;
}

// False when time is up before `done()`.
bool WaitFor(const std::function<bool()>& done, Clock::duration time) {
    const Clock::time_point deadline = Clock::now() + time;
    while (!done()) {
        if (Clock::now() >= deadline) return false;
        std::this_thread::sleep_for(kLookAgain);
    }
    return true;
}

bool HasEnded(pid_t process) {
    return waitpid(process, nullptr, WNOHANG) != 0;
}

}  // namespace

std::string Browser::Start(const std::string& program, const StopSignals& signals) {
    std::string problem = files_.Make();
    if (!problem.empty()) return problem;
    others_ = Children();
    prctl(PR_SET_CHILD_SUBREAPER, 1);  // what the browser leaves behind becomes a child of this process
    int commands = -1;
    int answers = -1;
    if (MakePipe(commands, commands_) && MakePipe(answers_, answers)) {
        problem = Spawn(program, signals, commands, answers);
    } else {
        problem = Reason(errno);
    }
    Close(commands);
    Close(answers);
    return problem;
}

std::string Browser::Spawn(const std::string& program, const StopSignals& signals, int commands,
                           int answers) {
    std::vector<std::string> line = CommandLine(program, files_.Profile());
    std::vector<std::string> environment = Environment(files_.Folder());

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, files_.Messages().c_str(), O_WRONLY | O_CREAT,
                                     S_IRUSR | S_IWUSR);
    posix_spawn_file_actions_adddup2(&files, commands, kCommandsInBrowser);
    posix_spawn_file_actions_adddup2(&files, answers, kAnswersInBrowser);

    // A group of its own: an interrupt from the terminal comes to us, and all of it can be ended at once.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t pipe_signal;
    sigemptyset(&pipe_signal);
    sigaddset(&pipe_signal, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &pipe_signal);
    posix_spawnattr_setsigmask(&attributes, &signals.WaitMask());
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

    const int error = posix_spawn(&process_, program.c_str(), &files, &attributes, Pointers(line).data(),
                                  Pointers(environment).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    if (error == 0) return {};
    process_ = -1;
    return program + ": " + Reason(error);
}

void Browser::End() {
    Close(commands_);
    Close(answers_);
    if (process_ < 0) return;
    const pid_t process = std::exchange(process_, -1);
    const auto ended = [&] { return HasEnded(process); };
    const bool by_itself = WaitFor(ended, kTimeToEnd);
    kill(-process, SIGKILL);
    if (!by_itself) WaitFor(ended, kTimeToFollow);

    // Some of what it started stands in groups of its own, and ends a moment later.
    const auto none_left = [&] { return Followers().empty(); };
    if (WaitFor(none_left, kTimeToFollow)) return;
    for (const pid_t follower : Followers()) kill(follower, SIGKILL);
    WaitFor(none_left, kTimeToFollow);
}

// What the browser has left behind and has not ended.
std::vector<pid_t> Browser::Followers() const {
    std::vector<pid_t> followers = Children();
    std::erase_if(followers, [&](pid_t child) {
        return std::find(others_.begin(), others_.end(), child) != others_.end() || HasEnded(child);
    });
    return followers;
}

}  // namespace QuillLive
