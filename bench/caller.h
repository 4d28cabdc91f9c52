#pragma once

#include <functional>

namespace bench {

/// One side of the comparison of small calls.
class Caller {
  public:
    virtual ~Caller() = default;

    /// Lists a folder with two files; `done` runs on a worker thread.
    virtual void call(std::function<void()> done) = 0;
};

/// One call after the other, each awaited by this thread.
void callInTurn(Caller& caller, int count);

/// `width` calls at once: each answer starts the next call. Returns after the last answer.
void callAtOnce(Caller& caller, int count, int width);

}  // namespace bench
