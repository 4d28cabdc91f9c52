#pragma once

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "baseapi/core/cancelable.h"
#include "baseapi/testkit/handlers.h"

namespace baseapi::inline v1::testkit {

/// An event of an answer, for the handlers that take it.
struct Event {
    const void* type;
    /// Calls a handler's function with it.
    std::function<void(const void* function)> tell;
};

/// What a call returns, unless that is left to the double, and the events that it brings.
struct Answer {
    Kept result;
    std::vector<Event> events;
};

/// Answers that wait for calls, and calls that have been; all without their types. Callable from any thread.
class CallLog {
  public:
    /// Puts an answer at the end of the queue.
    void enqueue(Answer answer) {
        const std::lock_guard lock(mutex_);
        answers_.push_back(std::move(answer));
    }

    /// Records a call and takes its answer, which is absent where none is queued.
    std::optional<Answer> take(Kept call) {
        const std::lock_guard lock(mutex_);
        calls_.push_back(std::move(call));
        if (answers_.empty()) return std::nullopt;
        auto answer = std::move(answers_.front());
        answers_.pop_front();
        return answer;
    }

    /// All calls so far.
    std::vector<Kept> calls() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }
    /// How many answers wait.
    std::size_t queued() const {
        const std::lock_guard lock(mutex_);
        return answers_.size();
    }

    /// A handle that counts how often it is cancelled, and moves nothing.
    std::shared_ptr<Cancelable> handle() const { return std::make_shared<Handle>(cancels_); }
    /// How often handles were cancelled.
    std::size_t cancels() const { return *cancels_; }

  private:
    class Handle final : public Cancelable {
      public:
        explicit Handle(std::shared_ptr<std::atomic<std::size_t>> count) : count_(std::move(count)) {}
        void cancel() override { ++*count_; }

      private:
        std::shared_ptr<std::atomic<std::size_t>> count_;
    };

    mutable std::mutex mutex_;
    std::vector<Kept> calls_;
    std::deque<Answer> answers_;
    std::shared_ptr<std::atomic<std::size_t>> cancels_ = std::make_shared<std::atomic<std::size_t>>(0);
};

}  // namespace baseapi::inline v1::testkit
