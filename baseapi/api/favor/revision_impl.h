#pragma once

#include <memory>

#include "baseapi/api/favor/i_revision.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IRevision> makeRevisionImpl();

}  // namespace baseapi::inline v1
