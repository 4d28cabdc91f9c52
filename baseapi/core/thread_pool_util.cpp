#include "baseapi/core/thread_pool_util.h"

#include "baseapi/core/log.h"

namespace baseapi::inline v1 {

NamedOperationQueue& ThreadPoolUtil::queue() {
    static NamedOperationQueue& queue = [&]() -> NamedOperationQueue& {
        auto& made = *new NamedOperationQueue("NORMAL_T");
        logLine("CPU num = ", activeProcessorCount());
        return made;
    }();
    return queue;
}

}  // namespace baseapi::inline v1
