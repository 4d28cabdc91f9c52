#pragma once

#include <future>
#include <memory>
#include <utility>

namespace test_support {

/// What a callback is called with: `start` is given the callback, and this waits for its call.
template <class Result, class Start>
Result awaited(Start start) {
    const auto result = std::make_shared<std::promise<Result>>();
    start([result](Result given) { result->set_value(std::move(given)); });
    return result->get_future().get();
}

}  // namespace test_support
