#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

#include "browser_files.h"
#include "stop_signals.h"

namespace QuillLive {

// A headless browser with a profile of its own, which listens to a pipe and answers on another one.
//
// The browser cannot outlive the object; nor does it outlive a process that is killed: it ends when its pipes
// close. The object ends every process that the browser started, and removes the profile. One object at
// a time.
class Browser {
public:
    Browser() = default;
    Browser(const Browser&) = delete;  // one owner
    Browser& operator=(const Browser&) = delete;
    ~Browser() { End(); }

    // Starts the program. Returns what is wrong, in words for people, or nothing. Whether the browser is able
    // to work shows when it answers.
    std::string Start(const std::string& program, const StopSignals& signals);

    // Ends it, if it runs. Waits a few seconds for it to do so by itself.
    void End();

    // Ends of the pipes, for its commands and its answers. -1 when it does not run.
    int Commands() const { return commands_; }
    int Answers() const { return answers_; }

    // What it said on standard error in the end.
    std::string LastMessages() const { return files_.LastMessages(); }

private:
    std::string Spawn(const std::string& program, const StopSignals& signals, int commands, int answers);

    std::vector<pid_t> Followers() const;

    BrowserFiles files_;
    std::vector<pid_t> others_;  // children that this process had before
    pid_t process_ = -1;         // leads a group of its own
    int commands_ = -1;
    int answers_ = -1;
};

}  // namespace QuillLive
