#include "baseapi/core/backup_thread_pool_util.h"

#include "baseapi/core/log.h"

namespace baseapi::inline v1 {

NamedOperationQueue& BackupThreadPoolUtil::queue() {
    static NamedOperationQueue& queue = [&]() -> NamedOperationQueue& {
        auto& made = *new NamedOperationQueue("BACKUP_NORMAL");
        logLine("CPU num = ", made.width());
        return made;
    }();
    return queue;
}

}  // namespace baseapi::inline v1
