#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace baseapi::inline v1 {

/// How a thread waits for another with a limit; a test puts a clock of its own in its place.
class WaitClock {
  public:
    virtual ~WaitClock() = default;

    /// Waits until `happened()` holds or `limit` has passed, and gives what `happened()` gives in the end.
    /// `lock` is held here and around each look at `happened()`; whoever makes it hold notifies `changed`.
    virtual bool wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
                      std::chrono::milliseconds limit, const std::function<bool()>& happened) = 0;
};

/// By the system's steady clock.
class SteadyWaitClock final : public WaitClock {
  public:
    bool wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
              std::chrono::milliseconds limit, const std::function<bool()>& happened) override {
        return changed.wait_for(lock, limit, happened);
    }
};

}  // namespace baseapi::inline v1
