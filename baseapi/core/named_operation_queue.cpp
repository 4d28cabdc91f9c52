#include "baseapi/core/named_operation_queue.h"

#include <unistd.h>

#include <deque>
#include <mutex>
#include <utility>

#include "baseapi/core/callback.h"
#include "baseapi/platform/worker_pool.h"

namespace baseapi::inline v1 {

/// Shared with the operations under way, which may outlive the queue.
class NamedOperationQueue::State : public std::enable_shared_from_this<State> {
  public:
    State(std::string called, int wide) : name(std::move(called)), width(wide) {}

    void add(std::shared_ptr<Operation> operation) {
        {
            const std::lock_guard lock(mutex_);
            waiting_.push_back(std::move(operation));
        }
        begin();
    }

    const std::string name;
    const int width;

  private:
    /// Begins what there is a place for.
    void begin() {
        while (auto next = takeNext()) {
            sharedPool()->post([next = std::move(next), self = shared_from_this()] {
                invokeCallback([&] { next->start(self->place()); });
            });
        }
    }

    /// Nothing where nothing waits or all places are occupied.
    std::shared_ptr<Operation> takeNext() {
        const std::lock_guard lock(mutex_);
        if (waiting_.empty() || occupied_ >= width) return nullptr;
        ++occupied_;
        auto next = std::move(waiting_.front());
        waiting_.pop_front();
        return next;
    }

    QueuePlace place() {
        return {nullptr, [self = shared_from_this()](void*) { self->leave(); }};
    }

    void leave() {
        {
            const std::lock_guard lock(mutex_);
            --occupied_;
        }
        begin();
    }

    std::mutex mutex_;
    std::deque<std::shared_ptr<Operation>> waiting_;
    int occupied_ = 0;
};

int activeProcessorCount() {
    return static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN));
}

NamedOperationQueue::NamedOperationQueue(std::string name)
    : NamedOperationQueue(std::move(name), activeProcessorCount() / 2) {}

NamedOperationQueue::NamedOperationQueue(std::string name, int width)
    : state_(std::make_shared<State>(std::move(name), width)) {}

NamedOperationQueue::~NamedOperationQueue() = default;

const std::string& NamedOperationQueue::name() const {
    return state_->name;
}

int NamedOperationQueue::width() const {
    return state_->width;
}

void NamedOperationQueue::addOperation(std::shared_ptr<Operation> operation) {
    state_->add(std::move(operation));
}

}  // namespace baseapi::inline v1
