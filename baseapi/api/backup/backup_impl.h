#pragma once

#include <memory>

#include "baseapi/api/backup/i_back_up.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IBackUp> makeBackupImpl();

}  // namespace baseapi::inline v1
