#pragma once

#include <cstdint>
#include <string>

namespace baseapi::inline v1 {

/// Told of a download by whoever uses `CancelableDownloadTask`.
class DownloadCallback {
  public:
    virtual ~DownloadCallback() = default;

    virtual void onProgress(std::int64_t bytes, std::int64_t total) = 0;
    virtual void onFailure(std::int64_t errCode, const std::string& errMsg) = 0;
    virtual void onSuccess(std::int64_t code, const std::string& msg) = 0;
};

}  // namespace baseapi::inline v1
