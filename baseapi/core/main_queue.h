#pragma once

#include <functional>
#include <utility>

#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {

/// Runs `job` on the main queue, after this call has returned or beside it, never inside it.
inline void onMainQueue(std::function<void()> job) {
    platform().mainQueue->post(std::move(job));
}

}  // namespace baseapi::inline v1
