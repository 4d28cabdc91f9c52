#pragma once

#include <memory>

#include "baseapi/api/user/i_user.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IUser> makeUserImpl();

}  // namespace baseapi::inline v1
