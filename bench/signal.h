#pragma once

#include <condition_variable>
#include <mutex>

namespace bench {

/// Lets one thread wait for another, asleep from the start: a wait that spins would take the processor from
/// the side that is measured.
class Signal {
  public:
    void raise() {
        std::lock_guard lock(mutex_);
        raised_ = true;
        changed_.notify_one();
    }
    /// Waits until the signal is raised, and lowers it.
    void await() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return raised_; });
        raised_ = false;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool raised_ = false;
};

}  // namespace bench
