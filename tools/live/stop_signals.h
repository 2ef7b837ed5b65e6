#pragma once

#include <csignal>

namespace QuillLive {

// SIGHUP, SIGINT and SIGTERM, put off so that the browser can be ended before they end this process.
//
// They come through only while somebody waits with WaitMask(), and are then remembered. One object per
// process.
class StopSignals {
public:
    StopSignals();
    StopSignals(const StopSignals&) = delete;  // one process, one set of signals
    StopSignals& operator=(const StopSignals&) = delete;

    // The signal mask of a wait that they are to interrupt; the one that this process was started with.
    const sigset_t& WaitMask() const { return before_; }

    // The signal that came, or 0.
    static int Raised();

    // Lets the signal that came do what it would have done at once.
    void PassOn() const;

private:
    sigset_t before_;
};

}  // namespace QuillLive
