#pragma once

namespace baseapi::inline v1 {

/// An object whose whole job is one operation.
class Runnable {
  public:
    virtual ~Runnable() = default;

    /// Starts the job. What of it runs before this returns, the implementer says.
    virtual void run() = 0;
};

}  // namespace baseapi::inline v1
