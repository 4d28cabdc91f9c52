#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

namespace quillbox {

/// What the main thread waits on: one lock for all that other threads tell it, and the end of its patience
/// after a Ctrl-C.
class Monitor {
  public:
    using Clock = std::chrono::steady_clock;

    /// `patience`: how long the final callback is waited for after the first Ctrl-C.
    explicit Monitor(Clock::duration patience = std::chrono::seconds(30)) : patience_(patience) {}

    /// The time so many seconds from now, or a year, whichever comes first: a clock cannot count to any
    /// number of seconds.
    static Clock::time_point after(double seconds);

    /// Changes what a `wait` looks at.
    void change(const std::function<void()>& change) {
        std::lock_guard lock(mutex_);
        change();
        changed_.notify_all();
    }

    /// Waits until `done`, which runs under the lock. False where the limit has passed, or the patience after
    /// an interruption.
    bool wait(const std::function<bool()>& done, std::optional<Clock::time_point> limit = {});

    /// Waits for nothing but the time. False where it was interrupted.
    bool sleepUntil(Clock::time_point time) {
        return !wait([this] { return end_.has_value(); }, time);
    }

    /// From now on waiting has an end.
    void interrupt();
    bool interrupted() const {
        std::lock_guard lock(mutex_);
        return end_.has_value();
    }

  private:
    const Clock::duration patience_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<Clock::time_point> end_;
};

}  // namespace quillbox
