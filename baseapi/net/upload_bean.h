#pragma once

#include <memory>
#include <optional>
#include <string>

#include "baseapi/core/callback.h"
#include "baseapi/net/base_response.h"
#include "baseapi/net/progress_listener.h"

namespace baseapi::inline v1 {

/// What is kept for one running PUT of a part; each may be absent.
struct UploadBean {
    /// Receives the progress.
    std::shared_ptr<ProgressListener> process;
    /// The key of the progress reports.
    std::optional<std::string> hash;
    /// Ends the caller's wait.
    std::optional<FinalCallback<BaseResponse>> continuation;
};

}  // namespace baseapi::inline v1
