#pragma once

#include <exception>
#include <functional>
#include <type_traits>
#include <utility>

namespace baseapi::inline v1 {

/// Told of a host's callback that threw: one log line. The library goes on as if the callback had returned.
void callbackThrew(const char* what) noexcept;

/// Runs a host's callback, an absent one included. What it throws goes no further.
template <class Function, class... Arguments>
void invokeCallback(const Function& callback, Arguments&&... arguments) noexcept {
    if constexpr (std::is_constructible_v<bool, const Function&>) {
        if (!callback) return;
    }
    try {
        callback(std::forward<Arguments>(arguments)...);
    } catch (const std::exception& error) {
        callbackThrew(error.what());
    } catch (...) {
        callbackThrew("unknown exception");
    }
}

/// A callback that runs at most once: it is moved out before it is called.
template <class... Arguments>
class FinalCallback {
  public:
    FinalCallback() = default;
    explicit FinalCallback(std::function<void(Arguments...)> callback) : callback_(std::move(callback)) {}

    void operator()(Arguments... arguments) noexcept {
        auto callback = std::exchange(callback_, nullptr);
        invokeCallback(callback, std::move(arguments)...);
    }

  private:
    std::function<void(Arguments...)> callback_;
};

}  // namespace baseapi::inline v1
