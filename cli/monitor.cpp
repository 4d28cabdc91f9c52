#include "cli/monitor.h"

#include <algorithm>

namespace quillbox {

Monitor::Clock::time_point Monitor::after(double seconds) {
    constexpr double longest = 365.0 * 24 * 3600;
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(
                              std::chrono::duration<double>(std::min(seconds, longest)));
}

bool Monitor::wait(const std::function<bool()>& done, std::optional<Clock::time_point> limit) {
    std::unique_lock lock(mutex_);
    while (!done()) {
        auto end = limit;
        if (end_) end = end ? std::min(*end, *end_) : *end_;
        if (!end) {
            changed_.wait(lock);
        } else {
            if (Clock::now() >= *end) return false;
            changed_.wait_until(lock, *end);
        }
    }
    return true;
}

void Monitor::interrupt() {
    change([this] { end_ = Clock::now() + patience_; });
}

}  // namespace quillbox
