#pragma once

#include <mutex>
#include <utility>

namespace baseapi::inline v1 {

/// A value that any thread may read or replace: a reader gets the old value or the new one, never half of
/// both.
template <class T>
class Guarded {
  public:
    Guarded() = default;
    explicit Guarded(T value) : value_(std::move(value)) {}

    /// A copy of the value.
    T get() const {
        std::lock_guard lock(mutex_);
        return value_;
    }
    /// Replaces the value; the old one is destroyed outside the lock.
    void set(T value) {
        std::lock_guard lock(mutex_);
        std::swap(value_, value);
    }
    Guarded& operator=(T value) {
        set(std::move(value));
        return *this;
    }
    /// Changes the value in place; `change` must not touch this object.
    template <class Change>
    void modify(Change&& change) {
        std::lock_guard lock(mutex_);
        std::forward<Change>(change)(value_);
    }

  private:
    mutable std::mutex mutex_;
    T value_{};
};

}  // namespace baseapi::inline v1
