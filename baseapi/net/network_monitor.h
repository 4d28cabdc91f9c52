#pragma once

#include <memory>

#include "baseapi/platform/executor.h"

namespace baseapi::inline v1 {

/// A name that is kept. Nothing makes one: whether a network can be reached plays no part in sending.
class NetworkMonitor {
  public:
    std::shared_ptr<void> monitor;
    std::shared_ptr<Executor> queue;
};

}  // namespace baseapi::inline v1
