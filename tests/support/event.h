#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace test_support {

/// The longest a test waits for something that should come.
inline constexpr std::chrono::seconds kPatience{30};

/// Something that happens once and that others wait for.
class Event {
  public:
    void set() {
        std::lock_guard lock(mutex_);
        happened_ = true;
        changed_.notify_all();
    }

    /// False where it has not happened in time.
    [[nodiscard]] bool wait(std::chrono::milliseconds patience = kPatience) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, patience, [this] { return happened_; });
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool happened_ = false;
};

}  // namespace test_support
