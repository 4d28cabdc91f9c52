#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

#include "baseapi/core/cancelable.h"

namespace baseapi::inline v1 {

/// A place in an operation queue: occupied for as long as somebody holds it.
using QueuePlace = std::shared_ptr<void>;

/// Work for an operation queue, done once.
class Operation : public Cancelable {
  public:
    Operation() = default;
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    /// Begins the work on the calling thread, unless it was cancelled or has been started before.
    void start(QueuePlace place = nullptr);

    /// An operation that has not started never runs; one that has runs on.
    void cancel() override;

  protected:
    /// The work. It may go on after this has returned, and keeps its place until it is done.
    virtual void main(QueuePlace place) = 0;

  private:
    std::atomic<bool> spent_ = false;
};

/// An operation made of a function.
class BlockOperation final : public Operation {
  public:
    explicit BlockOperation(std::function<void(QueuePlace)> block) : block_(std::move(block)) {}

  protected:
    void main(QueuePlace place) override { std::exchange(block_, nullptr)(std::move(place)); }

  private:
    std::function<void(QueuePlace)> block_;
};

}  // namespace baseapi::inline v1
