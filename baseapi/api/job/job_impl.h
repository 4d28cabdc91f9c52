#pragma once

#include <memory>

#include "baseapi/api/job/i_job.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IJob> makeJobImpl();

}  // namespace baseapi::inline v1
