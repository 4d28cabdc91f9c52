#pragma once

#include <functional>

namespace baseapi::inline v1 {

/// Something that runs jobs on threads of its own.
class Executor {
  public:
    virtual ~Executor() = default;

    /// Takes the job and returns at once; the job never runs inside this call. Callable from any thread.
    virtual void post(std::function<void()> job) = 0;
};

}  // namespace baseapi::inline v1
