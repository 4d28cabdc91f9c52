#pragma once

#include <functional>
#include <mutex>
#include <utility>

#include "tests/support/scripted_server.h"

namespace quillbox_test {

/// What a scripted server does; a test may change it while the server runs.
class Script {
  public:
    using Handler = std::function<void(test_support::Exchange&)>;

    Script() = default;
    explicit Script(Handler handler) : handler_(std::move(handler)) {}

    Script& operator=(Handler handler) {
        std::lock_guard lock(mutex_);
        handler_ = std::move(handler);
        return *this;
    }
    void operator()(test_support::Exchange& exchange) const {
        std::unique_lock lock(mutex_);
        const auto handler = handler_;
        lock.unlock();
        handler(exchange);
    }

  private:
    mutable std::mutex mutex_;
    Handler handler_;
};

}  // namespace quillbox_test
