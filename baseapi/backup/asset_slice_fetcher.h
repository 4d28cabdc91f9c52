#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "baseapi/platform/export.h"
#include "baseapi/platform/photo_library.h"

namespace baseapi::inline v1 {

/// Why a slice could not be read.
struct AssetSliceError {
    /// "AssetSliceError" for the operation's own errors, "generic" for those of the file system, whose codes
    /// are `errno`'s.
    std::string domain;
    std::int64_t code = 0;
    std::string message;
};

/// Reads byte ranges of photo library assets, for a host that hashes or uploads an asset in slices.
class BASEAPI_API AssetSliceFetcher {
  public:
    /// Receives the bytes or the error: exactly one of them is present.
    using Completion =
        std::function<void(std::optional<std::string> bytes, std::optional<AssetSliceError> error)>;

    AssetSliceFetcher() = delete;

    /// Reads `size` bytes of the asset's file from `offset` on, fewer where the file ends before; both in
    /// bytes. Returns at once; `completion` is called once, on the photo library's thread. Each call finds
    /// and opens the file anew, and slices may be asked for in parallel.
    static void getAssetSlice(const PhotoAsset& asset, std::uint64_t offset, std::uint64_t size,
                              Completion completion);
};

}  // namespace baseapi::inline v1
