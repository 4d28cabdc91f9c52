#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace baseapi::inline v1 {

/// A picture or a video of the photo library.
struct PhotoAsset {
    /// As the platform counts them.
    enum class MediaType { unknown = 0, image = 1, video = 2 };

    /// Names the asset, the same in each run.
    std::string localIdentifier;
    MediaType mediaType = MediaType::unknown;
};

/// The photo library that a system lends. Callable from several threads at once.
///
/// A request answers exactly once, on a thread of the library's own or before it returns, and may take as
/// long as fetching an asset over the network takes.
class PhotoLibrary {
  public:
    /// How `requestImageData` and `requestVideoFile` are to find the asset.
    struct RequestOptions {
        /// Whether an asset that is not on the device may be fetched.
        bool networkAccessAllowed = false;
        /// Which rendition is wanted, as the platform counts them.
        int version = 0;
    };
    /// How `requestContentEditingInput` is to find the asset.
    struct ContentEditingOptions {
        bool canHandleAdjustmentData = false;
        bool networkAccessAllowed = false;
    };
    /// The asset as an editor would get it.
    struct ContentEditingInput {
        /// The full-size rendition's file.
        std::optional<std::string> fullSizeImagePath;
    };
    /// The asset, or why there is none; both may be absent.
    struct ContentEditingAnswer {
        std::optional<ContentEditingInput> input;
        std::optional<std::string> error;
    };

    static constexpr int authorized = 3;
    static constexpr int limited = 4;

    virtual ~PhotoLibrary() = default;

    /// `authorized`, `limited`, or another number where access is not granted.
    virtual int authorizationStatus() = 0;

    /// All assets of the kind, the oldest creation date first.
    virtual std::vector<PhotoAsset> fetchAssets(PhotoAsset::MediaType mediaType) = 0;

    /// The name of the asset's first resource; absent where there is none.
    virtual std::optional<std::string> originalFilename(const PhotoAsset& asset) = 0;
    /// In bytes; of the same resource, absent where there is none.
    virtual std::optional<std::int64_t> fileSize(const PhotoAsset& asset) = 0;

    /// Answers with the picture's bytes; absent where there are none.
    virtual void requestImageData(const PhotoAsset& asset, const RequestOptions& options,
                                  std::function<void(std::optional<std::string>)> answer) = 0;
    /// Answers with the path of the video's file; absent where it has none.
    virtual void requestVideoFile(const PhotoAsset& asset, const RequestOptions& options,
                                  std::function<void(std::optional<std::string>)> answer) = 0;
    /// Answers with the file of the full-size rendition.
    virtual void requestContentEditingInput(const PhotoAsset& asset, const ContentEditingOptions& options,
                                            std::function<void(ContentEditingAnswer)> answer) = 0;
};

}  // namespace baseapi::inline v1
