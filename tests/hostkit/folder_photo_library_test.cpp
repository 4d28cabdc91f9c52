#include "hostkit/folder_photo_library.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>

#include "tests/support/exif_picture.h"
#include "tests/support/photo_library_contract.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/without_root_rights.h"

namespace {

namespace fs = std::filesystem;

/// Writes a file that was last changed then.
void writeFile(const fs::path& file, const std::string& content, timespec modified) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    const timespec times[] = {{0, UTIME_OMIT}, modified};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
}

}  // namespace

namespace test_support {

struct FolderLibraries {
    baseapi::PhotoLibrary& library() { return library_; }
    baseapi::PhotoLibrary& again() { return again_; }
    void add(const NewAsset& asset) {
        const auto seconds = asset.date.time_since_epoch().count();
        writeFile(folder_ / asset.name, asset.content, {static_cast<std::time_t>(seconds), 0});
    }
    baseapi::PhotoLibrary& refused() {
        add({"a.jpg"});
        return refused_;
    }

    TemporaryFolder folder_;
    hostkit::FolderPhotoLibrary library_{folder_.path()};
    hostkit::FolderPhotoLibrary again_{folder_.path()};
    hostkit::FolderPhotoLibrary refused_{folder_ / "a.jpg"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Folder, PhotoLibraryContract, FolderLibraries);

}  // namespace test_support

namespace {

using baseapi::PhotoAsset;
using hostkit::FolderPhotoLibrary;
using test_support::jpegTaken;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using MediaType = PhotoAsset::MediaType;

class FolderPhotoLibraryTest : public testing::Test {
  protected:
    fs::path write(const fs::path& name, const std::string& content, std::int64_t modified = 1'000'000'000,
                   long fraction = 0) const {
        const auto file = folder_ / name;
        writeFile(file, content, {static_cast<std::time_t>(modified), fraction});
        return file;
    }
    std::vector<std::string> identifiers(MediaType mediaType = MediaType::image) {
        std::vector<std::string> all;
        for (auto& asset : library_.fetchAssets(mediaType)) all.push_back(std::move(asset.localIdentifier));
        return all;
    }
    static std::optional<std::string> dataOf(FolderPhotoLibrary& library, const PhotoAsset& asset) {
        std::optional<std::string> data;
        library.requestImageData(asset, {}, [&](auto answer) { data = std::move(answer); });
        return data;
    }

    test_support::TemporaryFolder folder_;
    std::vector<std::string> warnings_;
    FolderPhotoLibrary library_{folder_.path(), [this](const fs::path& path, const std::string& why) {
                                    warnings_.push_back(path.filename().string() + ": " + why);
                                }};
};

TEST_F(FolderPhotoLibraryTest, PicturesAndVideosAtAnyDepthAreAssetsAndOtherFilesAreNot) {
    for (const auto* name :
         {"a.jpg", "in/b.PNG", "in/deep/c.HEIC", "d.MP4", "in/e.mov", "f.txt", "g", "in/.h.jpg"})
        write(name, "");
    EXPECT_THAT(identifiers(), ElementsAre("a.jpg", "in/.h.jpg", "in/b.PNG", "in/deep/c.HEIC"));
    EXPECT_THAT(identifiers(MediaType::video), ElementsAre("d.MP4", "in/e.mov"));
    EXPECT_THAT(identifiers(MediaType::unknown), IsEmpty());
    EXPECT_THAT(warnings_, IsEmpty());
}

TEST_F(FolderPhotoLibraryTest, APicturesOwnDateComesBeforeThatOfItsFile) {
    ASSERT_EQ(::setenv("TZ", "UTC0", 1), 0);
    write("2001.jpg", "no metadata", 1'000'000'000);
    write("2020.jpg", jpegTaken("2020:01:02 03:04:05"), 1);
    write("1999.jpg", jpegTaken("1999:01:02 03:04:05"), 1'700'000'000);
    write("2010.jpg", "", 1'262'304'000);
    EXPECT_THAT(identifiers(), ElementsAre("1999.jpg", "2001.jpg", "2010.jpg", "2020.jpg"));
}

TEST_F(FolderPhotoLibraryTest, AVideoHasTheDateOfItsFile) {
    write("a.mp4", jpegTaken("1999:01:02 03:04:05"), 20);
    write("b.mp4", "", 10);
    EXPECT_THAT(identifiers(MediaType::video), ElementsAre("b.mp4", "a.mp4"));
}

TEST_F(FolderPhotoLibraryTest, DatesOfOneSecondAreToldApartByTheFractionAndOfOneDateByPath) {
    write("a.jpg", "", 10, 999'999'999);
    write("b.jpg", "", 10, 999'999'998);
    write("d.jpg", "", 10, 5);
    write("c/z.jpg", "", 10, 5);
    EXPECT_THAT(identifiers(), ElementsAre("c/z.jpg", "d.jpg", "b.jpg", "a.jpg"));
}

TEST_F(FolderPhotoLibraryTest, DatesFarOffKeepTheirPlace) {
    write("old.jpg", "", -1'000'000'000);
    write("9999.jpg", jpegTaken("9999:12:31 23:59:59"));
    write("0001.jpg", jpegTaken("0001:01:02 00:00:00"));
    EXPECT_THAT(identifiers(), ElementsAre("0001.jpg", "old.jpg", "9999.jpg"));
}

TEST_F(FolderPhotoLibraryTest, AFileOfALaterCenturyKeepsItsPlace) {
    if (sizeof(std::time_t) < sizeof(std::int64_t)) GTEST_SKIP() << "dates of this system end in 2038";
    write("9999.jpg", jpegTaken("9999:12:31 23:59:59"));
    write("later.jpg", "", 15'000'000'000);
    EXPECT_THAT(identifiers(), ElementsAre("later.jpg", "9999.jpg"));
}

TEST_F(FolderPhotoLibraryTest, NamesAreBytes) {
    const std::vector<std::string> names{"\"quoted\".jpg", "line\nbreak.jpg", std::string(251, 'x') + ".jpg",
                                         "照片.jpg", "\xff\xfe.jpg"};
    for (const auto& name : names) write(name, name);
    EXPECT_EQ(identifiers(), names);
    for (const auto& asset : library_.fetchAssets(MediaType::image)) {
        EXPECT_EQ(library_.originalFilename(asset), asset.localIdentifier);
        EXPECT_EQ(dataOf(library_, asset), asset.localIdentifier);
    }
}

TEST_F(FolderPhotoLibraryTest, WhatIsNoReadableFileIsPassedOverWithAWarning) {
    ASSERT_EQ(::mkfifo((folder_ / "fifo.jpg").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder_ / "dangling.jpg");
    fs::create_symlink("loop.jpg", folder_ / "loop.jpg");
    fs::create_directory(folder_ / "folder.jpg");
    ::chmod(write("closed.jpg", "").c_str(), 0);
    write("closed/inner.jpg", "");
    ::chmod((folder_ / "closed").c_str(), 0);
    write("folder.jpg/a.jpg", "");
    fs::create_symlink("folder.jpg/a.jpg", folder_ / "linked.jpg");
    test_support::withoutRootRights(
        [&] { EXPECT_THAT(identifiers(), ElementsAre("folder.jpg/a.jpg", "linked.jpg")); });
    ::chmod((folder_ / "closed").c_str(), 0700);
    EXPECT_THAT(warnings_,
                UnorderedElementsAre("fifo.jpg: no regular file", "dangling.jpg: No such file or directory",
                                     "loop.jpg: Too many levels of symbolic links",
                                     "closed.jpg: Permission denied", "closed: Permission denied"));
}

TEST_F(FolderPhotoLibraryTest, ALoopOfLinksEnds) {
    write("a/b/c.jpg", "");
    fs::create_directory_symlink("../..", folder_ / "a" / "b" / "loop");
    EXPECT_THAT(identifiers(), ElementsAre("a/b/c.jpg"));
}

TEST_F(FolderPhotoLibraryTest, TheFolderMayBeGivenInAnySpelling) {
    write("in/a.jpg", "content");
    const auto text = folder_.path().string();
    for (const auto& spelling : {text + "/", text + "//", text + "/in/..", text + "/./"}) {
        FolderPhotoLibrary library(spelling);
        const auto assets = library.fetchAssets(MediaType::image);
        ASSERT_EQ(assets.size(), 1u) << spelling;
        EXPECT_EQ(assets[0].localIdentifier, "in/a.jpg") << spelling;
        EXPECT_EQ(dataOf(library, assets[0]), "content") << spelling;
    }
}

TEST_F(FolderPhotoLibraryTest, AFolderThatMayNotBeReadIsARefusedPermission) {
    write("a.jpg", "");
    ASSERT_EQ(::chmod(folder_.path().c_str(), 0), 0);
    test_support::withoutRootRights([&] {
        EXPECT_EQ(library_.authorizationStatus(), 2);
        EXPECT_THAT(identifiers(), IsEmpty());
    });
    ::chmod(folder_.path().c_str(), 0700);
    EXPECT_EQ(library_.authorizationStatus(), 3);
    EXPECT_EQ(FolderPhotoLibrary(folder_ / "missing").authorizationStatus(), 2);
    EXPECT_EQ(FolderPhotoLibrary(folder_ / "a.jpg").authorizationStatus(), 2);
}

TEST_F(FolderPhotoLibraryTest, AnIdentifierOfElsewhereLeadsNowhere) {
    const auto outside = write("a.jpg", "secret");
    write("inner/b.txt", "text");
    FolderPhotoLibrary inner(folder_ / "inner");
    for (const std::string& identifier :
         std::vector<std::string>{"../a.jpg", "x/../../a.jpg", outside.string(), "", ".", "b.txt"}) {
        const PhotoAsset asset{identifier, MediaType::image};
        EXPECT_EQ(inner.originalFilename(asset), std::nullopt) << identifier;
        EXPECT_EQ(inner.fileSize(asset), std::nullopt) << identifier;
        EXPECT_EQ(dataOf(inner, asset), std::nullopt) << identifier;
        inner.requestContentEditingInput(asset, {}, [&](const auto& answer) {
            EXPECT_FALSE(answer.input) << identifier;
            EXPECT_TRUE(answer.error) << identifier;
        });
    }
}

TEST_F(FolderPhotoLibraryTest, AFileThatHasGoneKeepsItsNameAndPathAndHasNoContent) {
    const auto picture = write("a.jpg", "x");
    const auto video = write("b.mp4", "x");
    fs::remove(picture);
    fs::remove(video);
    const PhotoAsset image{"a.jpg", MediaType::image};
    EXPECT_EQ(library_.originalFilename(image), "a.jpg");
    EXPECT_EQ(library_.fileSize(image), std::nullopt);
    EXPECT_EQ(dataOf(library_, image), std::nullopt);
    library_.requestVideoFile({"b.mp4", MediaType::video}, {},
                              [&](const auto& path) { EXPECT_EQ(path, video.string()); });
}

TEST_F(FolderPhotoLibraryTest, OriginalsStayAsTheyAre) {
    const auto content = jpegTaken("2020:01:02 03:04:05");
    const auto file = write("a.jpg", content);
    ASSERT_EQ(::chmod(file.c_str(), 0400), 0);
    const auto modified = fs::last_write_time(file);
    struct stat before {};
    ASSERT_EQ(::stat(file.c_str(), &before), 0);
    const auto assets = library_.fetchAssets(MediaType::image);
    ASSERT_EQ(assets.size(), 1u);
    EXPECT_EQ(dataOf(library_, assets[0]), content);
    EXPECT_EQ(fs::last_write_time(file), modified);
    struct stat after {};
    ASSERT_EQ(::stat(file.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), {}), 1);
}

}  // namespace
