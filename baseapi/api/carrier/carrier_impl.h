#pragma once

#include <memory>

#include "baseapi/api/carrier/i_carrier.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<ICarrier> makeCarrierImpl();

}  // namespace baseapi::inline v1
