#pragma once

#include "baseapi/core/named_operation_queue.h"

namespace baseapi::inline v1 {

/// Owns the queue "NORMAL_T", which runs the parts of file uploads: its width is the number of parts in
/// flight.
class ThreadPoolUtil {
  public:
    ThreadPoolUtil() = delete;

    /// Made on first use, never destroyed.
    static NamedOperationQueue& queue();
};

}  // namespace baseapi::inline v1
