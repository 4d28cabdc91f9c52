#include "baseapi/core/named_operation_queue.h"

#include <signal.h>
#include <unistd.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

#include "baseapi/core/callback.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi {

/// Shared with the workers, which may outlive the queue.
struct NamedOperationQueue::State {
    const std::string name;
    const int width;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<Operation>> waiting;
    int threads = 0;
    int idle = 0;
    bool closed = false;

    bool needsThread() const { return threads < width && static_cast<std::size_t>(idle) < waiting.size(); }

    /// The next operation, or nothing once the queue is closed and empty.
    std::shared_ptr<Operation> next() {
        std::unique_lock lock(mutex);
        ++idle;
        changed.wait(lock, [&] { return closed || !waiting.empty(); });
        --idle;
        if (waiting.empty()) return nullptr;
        auto operation = std::move(waiting.front());
        waiting.pop_front();
        return operation;
    }
};

namespace {

/// Starts a detached thread that takes no signals: those are the host's.
template <class Work>
void startThread(Work work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        std::thread(std::move(work)).detach();
    } catch (const std::system_error& error) {
        fatalStop(error.what());
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace

int activeProcessorCount() {
    return static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN));
}

NamedOperationQueue::NamedOperationQueue(std::string name)
    : NamedOperationQueue(std::move(name), activeProcessorCount() / 2) {}

NamedOperationQueue::NamedOperationQueue(std::string name, int width)
    : state_(new State{.name = std::move(name), .width = width}) {}

NamedOperationQueue::~NamedOperationQueue() {
    std::lock_guard lock(state_->mutex);
    state_->closed = true;
    state_->changed.notify_all();
}

const std::string& NamedOperationQueue::name() const {
    return state_->name;
}

int NamedOperationQueue::width() const {
    return state_->width;
}

void NamedOperationQueue::addOperation(std::shared_ptr<Operation> operation) {
    std::unique_lock lock(state_->mutex);
    state_->waiting.push_back(std::move(operation));
    const bool grow = state_->needsThread();
    if (grow) ++state_->threads;
    lock.unlock();
    state_->changed.notify_one();
    if (!grow) return;
    startThread([state = state_] {
        while (const auto next = state->next()) invokeCallback([&] { next->start(); });
    });
}

}  // namespace baseapi
