#pragma once

#include "baseapi/core/named_operation_queue.h"

namespace baseapi::inline v1 {

/// Owns the queue "BACKUP_NORMAL", which runs the files of album and directory backups: its width is the
/// number of files in flight. It is apart from the queue of the parts so that a file can sit and wait for its
/// parts without starving them.
class BackupThreadPoolUtil {
  public:
    BackupThreadPoolUtil() = delete;

    /// Made on first use, never destroyed.
    static NamedOperationQueue& queue();
};

}  // namespace baseapi::inline v1
