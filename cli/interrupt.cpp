#include "cli/interrupt.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <thread>
#include <utility>

#include "cli/exit_status.h"

namespace quillbox {
namespace {

sigset_t listenedTo() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    return signals;
}

}  // namespace

Interrupt::Interrupt(Monitor& monitor) : monitor_(monitor) {
    // A shell starts what runs in its background with the signal ignored, and an ignored signal is never
    // waited for with success.
    ::signal(SIGINT, SIG_DFL);
    const auto signals = listenedTo();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([this] { listen(); }).detach();
}

void Interrupt::listen() {
    const auto signals = listenedTo();
    int signal = 0;
    sigwait(&signals, &signal);
    // On a thread of its own: the second one ends the process also where a cancel does not return.
    std::thread([this] { first(); }).detach();
    sigwait(&signals, &signal);
    ::_exit(static_cast<int>(ExitStatus::interrupted));
}

void Interrupt::first() {
    std::lock_guard acting(acting_);
    std::unique_lock lock(mutex_);
    happened_ = true;
    const auto work = work_;
    const auto tell = tell_;
    lock.unlock();

    const auto what = work.waitingFor ? work.waitingFor() : std::string("the end of the work");
    monitor_.interrupt();
    // Whoever reads the words may count on the work being cancelled.
    if (work.cancel) work.cancel();
    if (tell) tell("interrupted; waiting for " + what + " (Ctrl-C once more ends at once)");
}

bool Interrupt::happened() {
    std::lock_guard acting(acting_);
    std::lock_guard lock(mutex_);
    return happened_;
}

void Interrupt::setWork(const Work& work) {
    bool happened = false;
    {
        std::lock_guard lock(mutex_);
        work_ = work;
        happened = happened_;
    }
    if (happened && work.cancel) work.cancel();
}

void Interrupt::setTell(std::function<void(const std::string&)> tell) {
    std::lock_guard lock(mutex_);
    tell_ = std::move(tell);
}

}  // namespace quillbox
