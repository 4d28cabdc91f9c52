#pragma once

#include <memory>
#include <string>

#include "baseapi/core/operation.h"

namespace baseapi::inline v1 {

/// The processors of the machine that are on line.
int activeProcessorCount();

/// Begins operations on the library's shared threads, in the order in which they were added, and has a fixed
/// number of them under way at once: each occupies its place until it is done. A width of 0 runs nothing.
class NamedOperationQueue {
  public:
    /// As wide as half the processors of the machine, rounded down.
    explicit NamedOperationQueue(std::string name);
    NamedOperationQueue(std::string name, int width);
    NamedOperationQueue(const NamedOperationQueue&) = delete;
    NamedOperationQueue& operator=(const NamedOperationQueue&) = delete;
    /// What has been added still runs.
    ~NamedOperationQueue();

    const std::string& name() const;
    /// The most operations at once.
    int width() const;

    /// Callable from any thread; the operation never runs inside this call.
    void addOperation(std::shared_ptr<Operation> operation);

  private:
    class State;
    const std::shared_ptr<State> state_;
};

}  // namespace baseapi::inline v1
