#pragma once

#include <memory>

#include "baseapi/api/files/i_file.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IFile> makeFileImpl();

}  // namespace baseapi::inline v1
