#pragma once

#include <string>
#include <string_view>

#include "baseapi/core/url.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// What a file's suffix says of it.
class BASEAPI_API FileInfoUtil {
  public:
    FileInfoUtil() = delete;

    /// The service's code for the suffix of `of`, "45" where it is not known. The suffix is taken as it
    /// stands: "JPG" is not known.
    static std::string fileTypeCode(const URL& of);

    /// The MIME type that the platform names for the suffix, otherwise "application/octet-stream".
    static std::string mimeType(std::string_view forSuffix);
};

}  // namespace baseapi::inline v1
