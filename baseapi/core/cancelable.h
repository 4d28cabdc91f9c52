#pragma once

namespace baseapi::inline v1 {

/// What a long operation returns. The operation keeps itself alive until it has ended: the handle may be
/// dropped.
class Cancelable {
  public:
    virtual ~Cancelable() = default;

    /// Asks the operation to stop and returns at once; it stops at its next checkpoint. Callable from any
    /// thread, and harmless on an operation that has ended.
    virtual void cancel() = 0;
};

}  // namespace baseapi::inline v1
