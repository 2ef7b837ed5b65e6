#include "stop_signals.h"

namespace QuillLive {

namespace {

constexpr int kSignals[] = {SIGHUP, SIGINT, SIGTERM};

volatile std::sig_atomic_t raised = 0;

void Remember(int signal) {
    raised = signal;
}

sigset_t Put(void (*handler)(int)) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler == SIG_IGN) continue;  // as under nohup
        struct sigaction action = {};
        action.sa_handler = handler;
        sigaction(signal, &action, nullptr);
        sigaddset(&signals, signal);
    }
    return signals;
}

}  // namespace

StopSignals::StopSignals() {
    const sigset_t signals = Put(Remember);
    sigprocmask(SIG_BLOCK, &signals, &before_);
}

int StopSignals::Raised() {
    return raised;
}

void StopSignals::PassOn() const {
    if (raised == 0) return;
    Put(SIG_DFL);
    std::raise(raised);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace QuillLive
