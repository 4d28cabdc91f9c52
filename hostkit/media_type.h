#pragma once

#include <string_view>

#include "baseapi/platform/photo_library.h"

namespace hostkit {

/// What a file of this name is by its suffix, in any letter case: a picture, a video, or unknown.
baseapi::PhotoAsset::MediaType mediaTypeOf(std::string_view fileName);

}  // namespace hostkit
