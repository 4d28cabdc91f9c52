#pragma once

#include <memory>
#include <utility>

namespace baseapi::inline v1 {

/// A value that may be absent and that copies of its owner share: `File.copy()` gives a record whose nested
/// records and arrays are the very same objects. Reads like `std::optional`.
template <class T>
class Shared {
  public:
    /// What is shared.
    using value_type = T;

    Shared() = default;
    Shared(T value) : held_(std::make_shared<T>(std::move(value))) {}  // NOLINT(google-explicit-constructor)

    /// Whether there is a value.
    bool has_value() const { return held_ != nullptr; }
    explicit operator bool() const { return has_value(); }
    /// Lets go of the value; other owners keep it.
    void reset() { held_.reset(); }
    /// Puts an empty value of its own in place.
    T& emplace() { return *(held_ = std::make_shared<T>()); }

    /// Only to be called while a value is there.
    T& operator*() const { return *held_; }
    T* operator->() const { return held_.get(); }

    /// Equal when both are absent or both hold equal values, shared or not.
    friend bool operator==(const Shared& left, const Shared& right) {
        return left.has_value() == right.has_value() && (!left.has_value() || *left == *right);
    }

  private:
    std::shared_ptr<T> held_;
};

}  // namespace baseapi::inline v1
