#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

#include "baseapi/platform/executor.h"

namespace quillbox {

/// A queue that knows whether there is anything to do. The library sends its requests from one, so that none
/// is about to go out where it is idle.
class CountedQueue final : public baseapi::Executor {
  public:
    explicit CountedQueue(std::shared_ptr<baseapi::Executor> inner) : inner_(std::move(inner)) {}

    void post(std::function<void()> job) override {
        inner_->post([held = std::make_shared<Held>(open_), job = std::move(job)] { job(); });
    }
    bool idle() const { return *open_ == 0; }

  private:
    using Count = std::shared_ptr<std::atomic<std::size_t>>;

    /// Counts a job until it has run.
    struct Held {
        explicit Held(Count open) : count(std::move(open)) { ++*count; }
        ~Held() { --*count; }
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;
        const Count count;
    };

    const std::shared_ptr<baseapi::Executor> inner_;
    const Count open_ = std::make_shared<std::atomic<std::size_t>>(0);
};

}  // namespace quillbox
