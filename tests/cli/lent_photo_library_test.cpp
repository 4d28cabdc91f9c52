#include "cli/lent_photo_library.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/temporary_folder.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;
using baseapi::PhotoAsset;

class LentPhotoLibraryTest : public testing::Test {
  protected:
    static std::string make(const fs::path& file, const std::string& text) {
        std::ofstream(file, std::ios::binary) << text;
        return file.string();
    }
    PhotoAsset only(PhotoAsset::MediaType type) { return library_.fetchAssets(type).at(0); }
    void requestImage() {
        library_.requestImageData(only(PhotoAsset::MediaType::image), {}, [](auto) {});
    }

    test_support::TemporaryFolder home_;
    const fs::path photos_ = fs::path(home_ / "photos");
    const bool made_ = fs::create_directory(photos_);
    TokenMask mask_;
    const std::unique_ptr<Output> output_ = makeOutput(true, mask_);
    LentPhotoLibrary library_{photos_, std::make_shared<BackupJournal>(), *output_};
};

TEST_F(LentPhotoLibraryTest, ACopyIsKnownAsItsPictureAndRemovedAtTheEnd) {
    const auto picture = make(photos_ / "a.jpg", "pixels");
    requestImage();
    const auto copy = make(home_ / "copy", "pixels");
    EXPECT_EQ(library_.originalOf(copy), picture);
    library_.removeCopies();
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_TRUE(fs::exists(picture));
}

TEST_F(LentPhotoLibraryTest, AVideoOfAPicturesSizeIsNoCopyOfIt) {
    const auto picture = make(photos_ / "a.jpg", "pixels");
    const auto video = make(photos_ / "b.mp4", "frames");
    requestImage();
    library_.requestVideoFile(only(PhotoAsset::MediaType::video), {},
                              [&](const auto& path) { EXPECT_EQ(path, video); });
    EXPECT_EQ(library_.originalOf(video), video);
    library_.removeCopies();
    EXPECT_TRUE(fs::exists(video));
    EXPECT_EQ(library_.originalOf(make(home_ / "copy", "pixels")), picture);
}

}  // namespace
}  // namespace quillbox
