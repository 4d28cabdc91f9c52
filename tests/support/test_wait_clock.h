#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

#include "baseapi/platform/wait_clock.h"
#include "tests/support/event.h"

namespace test_support {

/// A clock that stands still until the test lets the limits pass.
class TestWaitClock final : public baseapi::WaitClock {
  public:
    bool wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
              std::chrono::milliseconds limit, const std::function<bool()>& happened) override {
        Waiting self{*lock.mutex(), changed};
        // `expire` takes the two locks in the other order.
        lock.unlock();
        enter(self, limit);
        lock.lock();
        changed.wait(lock, [&] { return happened() || self.expired; });
        lock.unlock();
        leave(self);
        lock.lock();
        return happened();
    }

    /// Lets the limits of all who wait now pass.
    void expire() {
        const std::lock_guard ownLock(mutex_);
        for (auto* waiting : waiting_) {
            const std::lock_guard lock(waiting->mutex);
            waiting->expired = true;
            waiting->changed.notify_all();
        }
    }

    /// False where nobody comes to wait in time.
    [[nodiscard]] bool awaitWaiting() {
        std::unique_lock lock(mutex_);
        return entered_.wait_for(lock, kPatience, [this] { return !waiting_.empty(); });
    }

    /// The limit of the last wait that began.
    std::chrono::milliseconds lastLimit() const {
        const std::lock_guard lock(mutex_);
        return lastLimit_;
    }

  private:
    struct Waiting {
        std::mutex& mutex;
        std::condition_variable& changed;
        bool expired = false;
    };

    void enter(Waiting& waiting, std::chrono::milliseconds limit) {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(&waiting);
        lastLimit_ = limit;
        entered_.notify_all();
    }
    void leave(Waiting& waiting) {
        const std::lock_guard lock(mutex_);
        std::erase(waiting_, &waiting);
    }

    mutable std::mutex mutex_;
    std::condition_variable entered_;
    std::vector<Waiting*> waiting_;
    std::chrono::milliseconds lastLimit_{};
};

}  // namespace test_support
