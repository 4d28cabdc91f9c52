#pragma once

#include <coroutine>
#include <functional>

namespace baseapi::inline v1 {

/// Runs `job` on a thread for work that may wait, never inside this call. Such threads are apart from those
/// that deliver answers, so that a job may wait for an answer.
void inBackground(std::function<void()> job);

/// Lets a coroutine go on on such a thread: `co_await background();`
inline auto background() {
    struct Awaiter {
        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiting) const { inBackground(waiting); }
        void await_resume() const noexcept {}
    };
    return Awaiter{};
}

}  // namespace baseapi::inline v1
