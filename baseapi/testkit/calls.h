#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "baseapi/testkit/call_log.h"

namespace baseapi::inline v1::testkit {

/// The part of a double that is the same for all: the calls of all its operations, and the delivery of their
/// answers. Callable from any thread.
class Calls {
  public:
    Calls() = default;
    Calls(const Calls&) = delete;
    Calls& operator=(const Calls&) = delete;

    /// From now on answers wait for `deliver`.
    void hold() {
        const std::lock_guard lock(mutex_);
        holds_ = true;
    }

    /// Delivers the answer of the oldest call that waits, on this thread; false where none does.
    bool deliver() {
        std::function<void()> answer;
        {
            const std::lock_guard lock(mutex_);
            if (held_.empty()) return false;
            answer = std::move(held_.front());
            held_.pop_front();
        }
        answer();
        return true;
    }

    /// The operations that were called without an answer in the queue, in the order of the calls.
    std::vector<std::string> unanswered() const {
        const std::lock_guard lock(mutex_);
        return unanswered_;
    }

  protected:
    ~Calls() = default;

    /// What belongs to an operation, which `key` stands for.
    std::shared_ptr<CallLog> log(const void* key) {
        const std::lock_guard lock(mutex_);
        auto& place = logs_[key];
        if (!place) place = std::make_shared<CallLog>();
        return place;
    }

    /// A call of an operation; gives what the test wants it to return, or nothing.
    Kept called(const void* key, std::string_view name, Kept arguments, std::vector<Handler> handlers) {
        auto answer = log(key)->take(std::move(arguments));
        auto result = answer ? answer->result : nullptr;
        if (answer) {
            settle([=] { tell(handlers, answer->events); });
        } else {
            settle([handlers, why = missing(name)] { tellFailure(handlers, why); });
        }
        return result;
    }

  private:
    static void tell(const std::vector<Handler>& handlers, const std::vector<Event>& events) {
        for (const auto& event : events)
            for (const auto& handler : handlers)
                if (handler.event == event.type) event.tell(handler.function.get());
    }

    static void tellFailure(const std::vector<Handler>& handlers, const std::string& why) {
        for (const auto& handler : handlers)
            if (handler.fail) handler.fail(handler.function.get(), why);
    }

    std::string missing(std::string_view name) {
        const std::lock_guard lock(mutex_);
        unanswered_.emplace_back(name);
        return "no answer is queued for " + std::string(name);
    }

    void settle(std::function<void()> answer) {
        {
            const std::lock_guard lock(mutex_);
            if (holds_) return held_.push_back(std::move(answer));
        }
        answer();
    }

    mutable std::mutex mutex_;
    std::map<const void*, std::shared_ptr<CallLog>> logs_;
    std::deque<std::function<void()>> held_;
    std::vector<std::string> unanswered_;
    bool holds_ = false;
};

}  // namespace baseapi::inline v1::testkit
