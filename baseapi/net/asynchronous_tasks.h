#pragma once

#include "baseapi/platform/executor.h"

namespace baseapi {

/// The shared pool that requests are sent from. Made on first use, never destroyed.
Executor& asynchronousTasks();

}  // namespace baseapi
