#pragma once

#include <memory>

#include "baseapi/platform/executor.h"

namespace baseapi::inline v1 {

/// Runs jobs one after the other, each on some thread of `pool`.
std::shared_ptr<Executor> makeSerialQueue(std::shared_ptr<Executor> pool);

}  // namespace baseapi::inline v1
