#pragma once

#include <memory>

#include "baseapi/api/share/i_share.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IShare> makeShareImpl();

}  // namespace baseapi::inline v1
