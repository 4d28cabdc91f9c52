#pragma once

#include <mutex>
#include <shared_mutex>
#include <string>
#include <utility>

namespace baseapi::inline v1 {

/// Guards state that many read and few change: readers run together, a writer runs alone. Blocks run on the
/// calling thread and must not use the same queue again.
class StateQueue {
  public:
    explicit StateQueue(std::string label) : label_(std::move(label)) {}
    StateQueue(const StateQueue&) = delete;
    StateQueue& operator=(const StateQueue&) = delete;

    /// Names the queue in diagnostics.
    const std::string& label() const { return label_; }

    /// Runs `block` beside other readers and gives its result.
    template <class Block>
    decltype(auto) read(Block&& block) const {
        std::shared_lock lock(mutex_);
        return std::forward<Block>(block)();
    }
    /// Runs `block` alone and gives its result; what is read or written later sees its work.
    template <class Block>
    decltype(auto) write(Block&& block) {
        std::unique_lock lock(mutex_);
        return std::forward<Block>(block)();
    }

  private:
    const std::string label_;
    mutable std::shared_mutex mutex_;
};

}  // namespace baseapi::inline v1
