#pragma once

#include <memory>

#include "baseapi/api/sharefolder/i_share_folder.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IShareFolder> makeShareFolderImpl();

}  // namespace baseapi::inline v1
