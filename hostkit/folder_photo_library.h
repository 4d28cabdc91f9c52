#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/platform/export.h"
#include "baseapi/platform/photo_library.h"

namespace hostkit {

/// The pictures and videos in a folder, at any depth, as a photo library. What is one is told by its suffix,
/// in any letter case; an asset's identifier is its path below the folder, byte for byte. Links are followed,
/// and one that leads back to a folder on the way to it is not.
///
/// A picture's creation date is the one in its own metadata; where there is none, and for a video, it is the
/// file's modification time. Assets of one date come by identifier.
///
/// Files are only ever read. What cannot be, or is no regular file, is passed over with a warning. A folder
/// that cannot be listed is a permission that was refused.
///
/// All operations may be called from any thread and from several at once, and a request answers before it
/// returns. Nothing is kept in memory between two calls, so other programs may change the folder meanwhile;
/// an asset that has gone since is one without content. An identifier of elsewhere leads nowhere.
class BASEAPI_API FolderPhotoLibrary : public baseapi::PhotoLibrary {
  public:
    /// Told of a file or folder that was passed over and why, on the thread of the fetch.
    using Warning = std::function<void(const std::filesystem::path& path, const std::string& why)>;

    /// The folder may come and go. The warning may be absent.
    explicit FolderPhotoLibrary(std::filesystem::path folder, Warning warning = nullptr);

    int authorizationStatus() override;
    /// Opens each picture and reads its metadata; of the other files the names and dates are enough.
    std::vector<baseapi::PhotoAsset> fetchAssets(baseapi::PhotoAsset::MediaType mediaType) override;
    std::optional<std::string> originalFilename(const baseapi::PhotoAsset& asset) override;
    std::optional<std::int64_t> fileSize(const baseapi::PhotoAsset& asset) override;
    /// The file as it stands, whatever the options.
    void requestImageData(const baseapi::PhotoAsset& asset, const RequestOptions& options,
                          std::function<void(std::optional<std::string>)> answer) override;
    /// The original itself, whatever the options.
    void requestVideoFile(const baseapi::PhotoAsset& asset, const RequestOptions& options,
                          std::function<void(std::optional<std::string>)> answer) override;
    /// The original itself, whatever the options.
    void requestContentEditingInput(const baseapi::PhotoAsset& asset, const ContentEditingOptions& options,
                                    std::function<void(ContentEditingAnswer)> answer) override;

  private:
    void warn(const std::filesystem::path& path, const std::string& why) const;

    std::filesystem::path folder_;
    Warning warning_;
};

}  // namespace hostkit
