#pragma once

#include <atomic>
#include <functional>
#include <utility>

#include "baseapi/core/cancelable.h"

namespace baseapi::inline v1 {

/// Work for an operation queue, done once.
class Operation : public Cancelable {
  public:
    Operation() = default;
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    /// Runs the work on the calling thread, unless it was cancelled or has been started before.
    void start();

    /// An operation that has not started never runs; one that has runs on.
    void cancel() override;

  protected:
    /// The work. Its worker is occupied until this returns.
    virtual void main() = 0;

  private:
    std::atomic<bool> spent_ = false;
};

/// An operation made of a function.
class BlockOperation final : public Operation {
  public:
    explicit BlockOperation(std::function<void()> block) : block_(std::move(block)) {}

  protected:
    void main() override { std::exchange(block_, nullptr)(); }

  private:
    std::function<void()> block_;
};

}  // namespace baseapi::inline v1
