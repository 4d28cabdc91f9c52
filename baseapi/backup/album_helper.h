#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/core/url.h"
#include "baseapi/platform/export.h"
#include "baseapi/platform/photo_library.h"

namespace baseapi::inline v1 {

/// What the album backup knows of an asset before its upload.
struct BackupFileInfo {
    std::optional<URL> url;
    std::optional<std::string> name;
    std::optional<std::int64_t> size;
};

/// All pictures and all videos, each the oldest first.
struct MediaAssets {
    std::vector<PhotoAsset> photos;
    std::vector<PhotoAsset> videos;
};

/// Static access to the photo library of the platform. Without one there is no permission, and nothing to be
/// found.
class BASEAPI_API AlbumHelper {
  public:
    /// Receives the file of an asset, absent where it has none, on the photo library's thread.
    using URLCompletion = std::function<void(std::optional<URL>)>;

    AlbumHelper() = delete;

    /// Whether the photo library may be read, in full or in part.
    static bool checkPhotoLibraryPermission();
    /// Whether the address book may be read.
    static bool hasContactsPermission();

    /// The pictures and the videos of the photo library, the oldest first; empty without a library.
    static MediaAssets fetchAllMediaAssets();

    /// "unknown" where the asset has none.
    static std::string getOriginalFileName(const PhotoAsset& asset);
    /// In bytes; 0 where it is not known.
    static std::int64_t getFileSize(const PhotoAsset& asset);

    /// The file of the asset itself.
    static void getAssetURL(const PhotoAsset& asset, URLCompletion completion);
    /// A file that holds the asset's content: a picture is written into a new file of the temporary folder,
    /// whose name ends in "jpg" whatever its format is. Nobody removes it.
    static void getSimulatorFriendlyAssetURL(const PhotoAsset& asset, URLCompletion completion);

    /// Name, size and file of an asset. Blocks for the photo library's answer, at most 3 seconds; without one
    /// there is no file.
    static BackupFileInfo getBackupFileInfo(const PhotoAsset& asset);
};

}  // namespace baseapi::inline v1
