#include "tests/support/photo_library_double.h"

#include <map>

#include "tests/support/photo_library_contract.h"
#include "tests/support/temporary_folder.h"

namespace test_support {

/// Plans the double as a library in which assets were put one after the other.
class DoubleLibraries {
  public:
    DoubleLibraries() {
        auto& plan = library_.plan;
        plan.name = [this](const auto& asset) { return of(asset, &NewAsset::name); };
        plan.size = [this](const auto& asset) -> std::optional<std::int64_t> {
            const auto content = of(asset, &NewAsset::content);
            if (!content) return std::nullopt;
            return static_cast<std::int64_t>(content->size());
        };
        plan.imageData = [this](const auto& asset, const auto& answer) {
            answer(asset.mediaType == MediaType::image ? of(asset, &NewAsset::content) : std::nullopt);
        };
        plan.videoFile = [this](const auto& asset, const auto& answer) {
            answer(asset.mediaType == MediaType::video ? fileOf(asset) : std::nullopt);
        };
        plan.editingInput = [this](const auto& asset, const auto& answer) {
            const auto file = fileOf(asset);
            if (!file) return answer({std::nullopt, "no such asset"});
            answer({baseapi::PhotoLibrary::ContentEditingInput{file}, std::nullopt});
        };
    }

    baseapi::PhotoLibrary& library() { return library_; }
    baseapi::PhotoLibrary& again() { return library_; }
    void add(const NewAsset& asset) {
        std::ofstream(folder_ / asset.name, std::ios::binary) << asset.content;
        added_.emplace(asset.date, asset);
        library_.plan.assets.clear();
        for (const auto& [date, it] : added_)
            library_.plan.assets.push_back(
                {"id of " + it.name, it.name.ends_with(".jpg") ? MediaType::image : MediaType::video});
    }
    baseapi::PhotoLibrary& refused() {
        add({"a.jpg"});
        add({"b.mp4"});
        library_.plan.status = 2;
        return library_;
    }

  private:
    using MediaType = baseapi::PhotoAsset::MediaType;

    std::optional<std::string> of(const baseapi::PhotoAsset& asset, std::string NewAsset::*field) const {
        for (const auto& [date, it] : added_)
            if ("id of " + it.name == asset.localIdentifier) return it.*field;
        return std::nullopt;
    }
    std::optional<std::string> fileOf(const baseapi::PhotoAsset& asset) const {
        const auto name = of(asset, &NewAsset::name);
        if (!name) return std::nullopt;
        return folder_ / *name;
    }

    TemporaryFolder folder_;
    std::multimap<std::chrono::sys_seconds, NewAsset> added_;
    PhotoLibraryDouble library_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Double, PhotoLibraryContract, DoubleLibraries);

}  // namespace test_support
