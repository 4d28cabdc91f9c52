#pragma once

#include <string>

namespace baseapi::inline v1 {

/// Names for vCard files.
class VCFManager {
  public:
    VCFManager() = delete;

    /// The present moment in the device's time zone, such as "20250131_235959".
    static std::string getCurrentTimestamp();
};

}  // namespace baseapi::inline v1
