#include "platform/Signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace nordkeep {
namespace {

// A signal handler can reach nothing but what is global.
std::atomic<int> wakeUp{-1};
std::atomic<int> received{0};
std::atomic<bool> isToEndAtOnce{false};

void OnEnd(int) {
    if (isToEndAtOnce) ::_exit(0);
    if (received.fetch_add(1) > 0) ::_exit(1);
    const int error = errno;
    const char byte = 0;
    if (::write(wakeUp, &byte, 1) < 0) ::_exit(1);
    errno = error;
}

// Not SIG_IGN, which child processes would inherit.
void DoNothing(int) {}

void Handle(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

void HandleAll(void (*onEnd)(int), void (*onOther)(int)) {
    for (const int signal : {SIGTERM, SIGINT}) Handle(signal, onEnd);
    for (const int signal : {SIGHUP, SIGPIPE, SIGXFSZ}) Handle(signal, onOther);
}

}  // namespace

Signals::Signals() {
    if (::pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    received = 0;
    wakeUp = pipe_[1];
    HandleAll(OnEnd, DoNothing);
}

Signals::~Signals() {
    HandleAll(SIG_DFL, SIG_DFL);
    wakeUp = -1;
    for (const int end : pipe_) ::close(end);
}

void Signals::EndAtOnce(bool isOn) {
    isToEndAtOnce = isOn;
}

bool Signals::Take() {
    char byte = 0;
    return ::read(pipe_[0], &byte, 1) == 1;
}

}  // namespace nordkeep
