#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {

/// Where a thread waits for the answer of another, up to a limit. An answer that comes when nobody waits any
/// more is kept and read by nobody.
template <class T>
class AnswerBox {
  public:
    /// Only the first answer counts.
    void put(T answer) {
        const std::lock_guard lock(mutex_);
        if (!answer_) answer_ = std::move(answer);
        arrived_.notify_all();
    }

    /// The answer, or nothing where none came within `limit`.
    std::optional<T> wait(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        platform().waitClock->wait(lock, arrived_, limit, [this] { return answer_.has_value(); });
        return std::exchange(answer_, std::nullopt);
    }

  private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::optional<T> answer_;
};

/// Begins a call with the callback it is given and blocks this thread until the callback has run, `limit` at
/// most; nothing where it has not. The call is not cancelled then, and its late answer does no harm. Not for
/// a thread that delivers such answers.
///
///     const auto answer = timedAnswer<Result>(10s, [&](auto callback) { begin(callback); });
template <class T, class Begin>
std::optional<T> timedAnswer(std::chrono::milliseconds limit, Begin&& begin) {
    const auto box = std::make_shared<AnswerBox<T>>();
    std::forward<Begin>(begin)([box](T answer) { box->put(std::move(answer)); });
    return box->wait(limit);
}

}  // namespace baseapi::inline v1
