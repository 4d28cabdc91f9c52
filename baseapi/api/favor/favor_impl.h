#pragma once

#include <memory>

#include "baseapi/api/favor/i_favor.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IFavor> makeFavorImpl();

}  // namespace baseapi::inline v1
