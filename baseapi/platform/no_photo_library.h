#pragma once

#include "baseapi/platform/photo_library.h"

namespace baseapi::inline v1 {

/// What stands for the photo library of a system that lends none: its permission is not granted.
class NoPhotoLibrary : public PhotoLibrary {
  public:
    int authorizationStatus() override { return 2; }
    std::vector<PhotoAsset> fetchAssets(PhotoAsset::MediaType) override { return {}; }
    std::optional<std::string> originalFilename(const PhotoAsset&) override { return std::nullopt; }
    std::optional<std::int64_t> fileSize(const PhotoAsset&) override { return std::nullopt; }
    void requestImageData(const PhotoAsset&, const RequestOptions&,
                          std::function<void(std::optional<std::string>)> answer) override {
        answer(std::nullopt);
    }
    void requestVideoFile(const PhotoAsset&, const RequestOptions&,
                          std::function<void(std::optional<std::string>)> answer) override {
        answer(std::nullopt);
    }
    void requestContentEditingInput(const PhotoAsset&, const ContentEditingOptions&,
                                    std::function<void(ContentEditingAnswer)> answer) override {
        answer({});
    }
};

}  // namespace baseapi::inline v1
