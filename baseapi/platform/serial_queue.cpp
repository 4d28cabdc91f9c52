#include "baseapi/platform/serial_queue.h"

#include <deque>
#include <functional>
#include <mutex>
#include <utility>

#include "baseapi/platform/thread.h"

namespace baseapi::inline v1 {
namespace {

class SerialQueue final : public Executor, public std::enable_shared_from_this<SerialQueue> {
  public:
    explicit SerialQueue(std::shared_ptr<Executor> pool) : pool_(std::move(pool)) {}

    void post(std::function<void()> job) override {
        {
            const std::lock_guard lock(mutex_);
            jobs_.push_back(std::move(job));
            if (std::exchange(running_, true)) return;
        }
        pool_->post([self = shared_from_this()] { self->run(); });
    }

  private:
    void run() {
        while (auto job = next()) runJob(job);
    }

    /// Nothing where there is none, and the queue does not run any more.
    std::function<void()> next() {
        const std::lock_guard lock(mutex_);
        if (jobs_.empty()) {
            running_ = false;
            return nullptr;
        }
        auto job = std::move(jobs_.front());
        jobs_.pop_front();
        return job;
    }

    const std::shared_ptr<Executor> pool_;
    std::mutex mutex_;
    std::deque<std::function<void()>> jobs_;
    bool running_ = false;
};

}  // namespace

std::shared_ptr<Executor> makeSerialQueue(std::shared_ptr<Executor> pool) {
    return std::make_shared<SerialQueue>(std::move(pool));
}

}  // namespace baseapi::inline v1
