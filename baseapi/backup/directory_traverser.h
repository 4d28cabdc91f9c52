#pragma once

#include <functional>
#include <string>

#include "baseapi/backup/file_detail_bean.h"

namespace baseapi::inline v1 {

/// Walks local folders for a backup.
class DirectoryTraverser {
  public:
    using Found = std::function<void(FileDetailBean&&)>;

    DirectoryTraverser() = delete;

    /// Hands what is below `rootPath`, the root included, to `found`, breadth first and each folder in the
    /// order of its listing, with the cloud path that it has below `targetCloudPath`. Hidden files are found
    /// too, and links are followed; a link to a folder that the way from the root has come through is not
    /// entered. What cannot be read is logged and left out. Names are bytes. Blocks; `found` is called on the
    /// calling thread.
    static void generateFileDetailBeans(const std::string& rootPath, const std::string& targetCloudPath,
                                        const Found& found);
};

}  // namespace baseapi::inline v1
