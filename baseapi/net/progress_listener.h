#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace baseapi::inline v1 {

/// Receives the progress of one PUT, on a thread of the delegate queue.
class ProgressListener {
  public:
    virtual ~ProgressListener() = default;

    /// `hash` names what is being sent; `bytesWritten` is what has gone so far of the `totalBytes` of this
    /// one part.
    virtual void onProgress(const std::string& hash, std::int64_t bytesWritten, std::int64_t totalBytes) = 0;
};

/// Hands progress to a function.
class ProgressHandler : public ProgressListener {
  public:
    using Closure =
        std::function<void(const std::string& hash, std::int64_t bytesWritten, std::int64_t totalBytes)>;

    ProgressHandler(std::weak_ptr<void> target, Closure closure)
        : callback(std::move(target)), progressClosure(std::move(closure)) {}

    /// Calls `progressClosure`, whether or not the target still exists.
    void onProgress(const std::string& hash, std::int64_t bytesWritten, std::int64_t totalBytes) override {
        progressClosure(hash, bytesWritten, totalBytes);
    }

    /// Not kept alive by this object.
    std::weak_ptr<void> callback;
    Closure progressClosure;
};

}  // namespace baseapi::inline v1
