#include "cli/lent_photo_library.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

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
    /// The library's copy of the picture that is asked for.
    std::string copyOf(const PhotoAsset& picture) {
        const auto copy = copies_ / std::to_string(++count_);
        library_.requestImageData(picture, {}, [&](const auto& bytes) { make(copy, bytes.value()); });
        return copy.string();
    }

    test_support::TemporaryFolder home_;
    const fs::path photos_ = fs::path(home_ / "photos");
    const fs::path copies_ = fs::path(home_ / "copies");
    const bool made_ = fs::create_directory(photos_) && fs::create_directory(copies_);
    int count_ = 0;
    TokenMask mask_;
    const std::unique_ptr<Output> output_ = makeOutput(true, mask_);
    LentPhotoLibrary library_{photos_, copies_, std::make_shared<BackupJournal>(), *output_};
};

TEST_F(LentPhotoLibraryTest, ACopyIsKnownAsItsPictureAndRemovedAfterwards) {
    const auto picture = make(photos_ / "a.jpg", "pixels");
    const auto copy = copyOf(only(PhotoAsset::MediaType::image));
    auto item = library_.identify(copy);
    EXPECT_EQ(item.file, picture);
    EXPECT_FALSE(item.obstacle);
    EXPECT_TRUE(fs::exists(copy));
    item.copy.reset();
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_TRUE(fs::exists(picture));
}

TEST_F(LentPhotoLibraryTest, AVideoIsItsOwnFileAndStays) {
    make(photos_ / "a.jpg", "pixels");
    const auto video = make(photos_ / "b.mp4", "frames");
    copyOf(only(PhotoAsset::MediaType::image));
    library_.requestVideoFile(only(PhotoAsset::MediaType::video), {},
                              [&](const auto& path) { EXPECT_EQ(path, video); });
    auto item = library_.identify(video);
    EXPECT_EQ(item.file, video);
    EXPECT_EQ(item.copy, nullptr);
}

TEST_F(LentPhotoLibraryTest, PicturesOfOneSizeAreToldApartByTheirContent) {
    const auto one = make(photos_ / "a.jpg", "pixels");
    const auto other = make(photos_ / "b.jpg", "points");
    const auto pictures = library_.fetchAssets(PhotoAsset::MediaType::image);
    const auto nameOfCopy = [&](std::size_t index) {
        return library_.identify(copyOf(pictures.at(index))).file;
    };
    const auto isFirst = pictures.at(0).localIdentifier == "a.jpg";
    const auto first = copyOf(pictures.at(0));
    EXPECT_EQ(nameOfCopy(1), isFirst ? other : one);
    EXPECT_EQ(library_.identify(first).file, isFirst ? one : other);
}

TEST_F(LentPhotoLibraryTest, PicturesOfOneContentHaveACopyEach) {
    make(photos_ / "a.jpg", "pixels");
    make(photos_ / "b.jpg", "pixels");
    const auto pictures = library_.fetchAssets(PhotoAsset::MediaType::image);
    const auto copies = {copyOf(pictures.at(0)), copyOf(pictures.at(1))};
    std::set<std::string> names;
    for (const auto& copy : copies) names.insert(library_.identify(copy).file);
    EXPECT_EQ(names, (std::set{(photos_ / "a.jpg").string(), (photos_ / "b.jpg").string()}));
}

TEST_F(LentPhotoLibraryTest, APictureThatHasVanishedHasACopyThatIsNotSent) {
    const auto gone = make(photos_ / "a.jpg", "pixels");
    const auto picture = only(PhotoAsset::MediaType::image);
    fs::remove(gone);
    const auto item = library_.identify(copyOf(picture));
    EXPECT_EQ(item.file, gone);
    EXPECT_EQ(item.obstacle, "No such file or directory");
}

TEST_F(LentPhotoLibraryTest, AVideoThatHasVanishedKeepsItsName) {
    const auto gone = make(photos_ / "b.mp4", "frames");
    const auto video = only(PhotoAsset::MediaType::video);
    fs::remove(gone);
    library_.requestVideoFile(video, {}, [&](const auto& path) { EXPECT_EQ(path, gone); });
}

TEST_F(LentPhotoLibraryTest, AfterTheStopNothingIsReadAndAfterTheCloseNothingCopied) {
    make(photos_ / "a.jpg", "pixels");
    const auto picture = only(PhotoAsset::MediaType::image);
    library_.stop();
    library_.requestImageData(picture, {}, [](const auto& bytes) { EXPECT_EQ(bytes, ""); });
    library_.close();
    library_.requestImageData(picture, {}, [](const auto&) { FAIL(); });
}

}  // namespace
}  // namespace quillbox
