#include "baseapi/core/named_operation_queue.h"

#include <unistd.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>

#include "baseapi/core/callback.h"
#include "baseapi/platform/fatal_stop.h"
#include "baseapi/platform/thread.h"

namespace baseapi::inline v1 {

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
    if (grow) addThread();
}

void NamedOperationQueue::addThread() {
    try {
        startThread(state_->name, [state = state_] {
            while (const auto next = state->next()) invokeCallback([&] { next->start(); });
        }).detach();
    } catch (const std::system_error& error) {
        std::lock_guard lock(state_->mutex);
        if (--state_->threads == 0) fatalStop(error.what());  // nobody would ever run what waits
    }
}

}  // namespace baseapi::inline v1
