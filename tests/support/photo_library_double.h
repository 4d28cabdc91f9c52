#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "baseapi/platform/photo_library.h"

namespace test_support {

/// A photo library in memory that does what the test says and remembers how it was asked.
class PhotoLibraryDouble : public baseapi::PhotoLibrary {
  public:
    using Asset = baseapi::PhotoAsset;
    using PathAnswer = std::function<void(std::optional<std::string>)>;

    /// All may be set while nothing is under way.
    struct Plan {
        int status = authorized;
        std::vector<Asset> assets;
        std::function<std::optional<std::string>(const Asset&)> name;
        std::function<std::optional<std::int64_t>(const Asset&)> size;
        std::function<void(const Asset&, PathAnswer)> imageData;
        std::function<void(const Asset&, PathAnswer)> videoFile;
        std::function<void(const Asset&, std::function<void(ContentEditingAnswer)>)> editingInput;
    };
    Plan plan;

    int authorizationStatus() override { return plan.status; }
    std::vector<Asset> fetchAssets(Asset::MediaType mediaType) override {
        std::vector<Asset> found;
        if (plan.status != authorized && plan.status != limited) return found;
        for (const auto& asset : plan.assets)
            if (asset.mediaType == mediaType) found.push_back(asset);
        return found;
    }
    std::optional<std::string> originalFilename(const Asset& asset) override {
        return plan.name ? plan.name(asset) : std::nullopt;
    }
    std::optional<std::int64_t> fileSize(const Asset& asset) override {
        return plan.size ? plan.size(asset) : std::nullopt;
    }
    void requestImageData(const Asset& asset, const RequestOptions& options, PathAnswer answer) override {
        note("image", options.networkAccessAllowed, options.version);
        plan.imageData ? plan.imageData(asset, std::move(answer)) : answer(std::nullopt);
    }
    void requestVideoFile(const Asset& asset, const RequestOptions& options, PathAnswer answer) override {
        note("video", options.networkAccessAllowed, options.version);
        plan.videoFile ? plan.videoFile(asset, std::move(answer)) : answer(std::nullopt);
    }
    void requestContentEditingInput(const Asset& asset, const ContentEditingOptions& options,
                                    std::function<void(ContentEditingAnswer)> answer) override {
        note("editing", options.networkAccessAllowed, options.canHandleAdjustmentData);
        plan.editingInput ? plan.editingInput(asset, std::move(answer)) : answer({});
    }

    /// "KIND network VERSION" of each request.
    std::vector<std::string> requests() const {
        std::lock_guard lock(mutex_);
        return requests_;
    }
    void reset() {
        plan = {};
        std::lock_guard lock(mutex_);
        requests_.clear();
    }

  private:
    void note(const std::string& kind, bool network, int detail) {
        std::lock_guard lock(mutex_);
        requests_.push_back(kind + (network ? " network " : " local ") + std::to_string(detail));
    }

    mutable std::mutex mutex_;
    std::vector<std::string> requests_;
};

}  // namespace test_support
