#pragma once

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "baseapi/platform/log_sink.h"
#include "tests/support/event.h"

namespace test_support {

/// Keeps the library's log lines.
class RecordingLog : public baseapi::LogSink {
  public:
    void line(std::span<const std::string_view> pieces) noexcept override {
        std::string whole;
        for (const auto piece : pieces) whole += piece;
        std::lock_guard lock(mutex_);
        lines_.push_back(std::move(whole));
        changed_.notify_all();
    }

    std::vector<std::string> lines() const {
        std::lock_guard lock(mutex_);
        return lines_;
    }
    bool contains(std::string_view line) const {
        std::lock_guard lock(mutex_);
        return std::ranges::find(lines_, line) != lines_.end();
    }
    /// False where no such line comes in time.
    [[nodiscard]] bool waitFor(std::string_view line) const {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kPatience,
                                 [&] { return std::ranges::find(lines_, line) != lines_.end(); });
    }
    bool containsBeginning(std::string_view beginning) const {
        std::lock_guard lock(mutex_);
        return beginsOne(beginning);
    }
    /// False where no line that begins so comes in time.
    [[nodiscard]] bool waitForBeginning(std::string_view beginning) const {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kPatience, [&] { return beginsOne(beginning); });
    }
    void clear() {
        std::lock_guard lock(mutex_);
        lines_.clear();
    }

  private:
    bool beginsOne(std::string_view beginning) const {
        return std::ranges::any_of(lines_, [&](const auto& line) { return line.starts_with(beginning); });
    }

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<std::string> lines_;
};

}  // namespace test_support
