#pragma once

#include <filesystem>
#include <optional>

#include "hostkit/exif_date.h"

namespace hostkit {

/// When a picture was taken, or else digitised, or else last changed, as its own metadata tell it; absent
/// where they do not, and for what is no picture. Reads of the file what leads to the metadata, and prints
/// nothing. May be called from several threads at once, and by a thread that outlives `main`.
///
/// From the first call on Exiv2 writes no log in this process, also for other users of it.
std::optional<Instant> pictureDate(const std::filesystem::path& picture) noexcept;

}  // namespace hostkit
