#pragma once

#include <string>

#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// Names for vCard files.
class BASEAPI_API VCFManager {
  public:
    VCFManager() = delete;

    /// The present moment in the device's time zone, such as "20250131_235959".
    static std::string getCurrentTimestamp();
};

}  // namespace baseapi::inline v1
