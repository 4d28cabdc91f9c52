#pragma once

#include <atomic>
#include <coroutine>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

#include "baseapi/core/callback.h"

namespace baseapi::inline v1 {

/// What a `Task` gives, once it has ended.
template <class T>
struct TaskValue {
    void return_value(T result) { value = std::move(result); }
    T take() { return std::move(*value); }

    std::optional<T> value;
};
template <>
struct TaskValue<void> {
    void return_void() {}
    void take() {}
};

/// A coroutine that gives one value, or nothing, to the coroutine that awaits it. It starts when it is
/// awaited, and goes on on whatever thread the callback that it waits for comes on.
template <class T>
class [[nodiscard]] Task {
  public:
    struct promise_type : TaskValue<T> {
        Task get_return_object() { return Task(Handle::from_promise(*this)); }
        std::suspend_always initial_suspend() noexcept { return {}; }
        auto final_suspend() noexcept {
            struct Awaiter {
                bool await_ready() noexcept { return false; }
                std::coroutine_handle<> await_suspend(std::coroutine_handle<promise_type> ended) noexcept {
                    return ended.promise().awaiting;
                }
                void await_resume() noexcept {}
            };
            return Awaiter{};
        }
        void unhandled_exception() { failure = std::current_exception(); }

        std::coroutine_handle<> awaiting;
        std::exception_ptr failure;
    };

    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() {
        if (handle_) handle_.destroy();
    }

    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting) noexcept {
        handle_.promise().awaiting = awaiting;
        return handle_;
    }
    T await_resume() {
        auto& promise = handle_.promise();
        if (promise.failure) std::rethrow_exception(promise.failure);
        return promise.take();
    }

  private:
    using Handle = std::coroutine_handle<promise_type>;

    explicit Task(Handle handle) : handle_(handle) {}

    Handle handle_;
};

/// A coroutine that starts at once, belongs to nobody and frees itself at its end. What it throws is logged.
struct Detached {
    struct promise_type {
        Detached get_return_object() { return {}; }
        std::suspend_never initial_suspend() noexcept { return {}; }
        std::suspend_never final_suspend() noexcept { return {}; }
        void return_void() {}
        void unhandled_exception() noexcept {
            invokeCallback([] { std::rethrow_exception(std::current_exception()); });
        }
    };
};

/// Awaits the one call of a callback, and gives what it was called with:
///
///     const auto answer = co_await callbackOf<NetworkResult<T>>([&](auto callback) { begin(callback); });
///
/// The coroutine goes on on the callback's thread, or on its own where the callback came before `start`
/// returned.
template <class Result, class Start>
class [[nodiscard]] CallbackAwaiter {
  public:
    explicit CallbackAwaiter(Start start) : start_(std::move(start)) {}

    bool await_ready() const noexcept { return false; }
    bool await_suspend(std::coroutine_handle<> waiting) {
        start_([this, waiting](Result result) {
            result_ = std::move(result);
            if (met_.exchange(true)) waiting.resume();
        });
        return !met_.exchange(true);
    }
    Result await_resume() { return std::move(*result_); }

  private:
    Start start_;
    std::optional<Result> result_;
    /// Set by the callback and by the return of `start`: the second of them lets the coroutine go on.
    std::atomic<bool> met_ = false;
};

template <class Result, class Start>
CallbackAwaiter<Result, Start> callbackOf(Start start) {
    return CallbackAwaiter<Result, Start>(std::move(start));
}

}  // namespace baseapi::inline v1
