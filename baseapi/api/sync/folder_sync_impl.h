#pragma once

#include <memory>

#include "baseapi/api/sync/i_folder_sync.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IFolderSync> makeFolderSyncImpl();

}  // namespace baseapi::inline v1
