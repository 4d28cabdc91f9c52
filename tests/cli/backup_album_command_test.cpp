#include "tests/cli/backup_test.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

const std::string createPath = "/quillbox/ose/v1/files/create";

class BackupAlbumTest : public BackupTest {
  protected:
    std::vector<std::string> line(std::vector<std::string> more = {}) const {
        more.insert(more.begin(), {"backup", "album", "--device-id", "7", "--photos", "photos"});
        return more;
    }
    Outcome backup(std::vector<std::string> more = {}) const { return json(line(std::move(more))); }
    std::vector<std::string> temporaryFiles() const {
        std::vector<std::string> files;
        for (const auto& entry : fs::directory_iterator(temporaryFolder())) files.push_back(entry.path());
        return files;
    }
};

TEST_F(BackupAlbumTest, PicturesAndVideosGoUpIntoTheirFolders) {
    make("photos/a.jpg", "a picture");
    make("photos/deep/b.PNG", "another one");
    make("photos/c.mp4", "a video");
    make("photos/notes.txt", "no asset");
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), complete(3, 0));
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(json({"ls", idOf("Images")}).lines, SizeIs(2));
    EXPECT_THAT(json({"ls", idOf("Videos")}).lines, ElementsAre(HasSubstr(R"("name":"c.mp4")")));
    EXPECT_EQ(propertiesOfRecord("101"), counts(3, 0));
    EXPECT_THAT(temporaryFiles(), IsEmpty());
    expectNoLock("101");
}

TEST_F(BackupAlbumTest, AnEmptyAlbumIsBackedUp) {
    fs::create_directories(home_ / "photos");
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.lines, ElementsAre(complete(0, 0)));
    EXPECT_EQ(text(line()).output, "ok    the backup of the album: 0 files backed up, 0 failed\n");
}

TEST_F(BackupAlbumTest, AFolderThatCannotBeReadIsARefusedPermission) {
    const auto before = journal().size();
    const auto result = backup();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(complete(0, 0, 100004, "no album permission")));
    EXPECT_EQ(result.error, "quillbox: the backup of the album failed: no album permission (100004)\n");
    EXPECT_EQ(journal().size(), before);
}

TEST_F(BackupAlbumTest, APictureThatFailsIsToldByItsOwnName) {
    make("photos/a.jpg", "first");
    make("photos/b.jpg", "other");
    make("photos/c.jpg", "longer than those");
    refuse("files/create", 507, "quota exceeded", 2);
    const auto result = backup({"--fail-on-partial"});
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.lines.back(), complete(2, 1));
    EXPECT_THAT(
        result.error,
        testing::MatchesRegex("photos/[abc].jpg: the service refused to create it: 507 quota exceeded\n"));
    EXPECT_THAT(temporaryFiles(), IsEmpty());
}

TEST_F(BackupAlbumTest, AssetsWithoutAFolderAreToldWithItsCause) {
    make("photos/a.jpg", "a picture");
    make("photos/c.mp4", "a video");
    refuse("directory", 403, "not here", 1);
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), complete(1, 1));
    EXPECT_EQ(result.error,
              "photos/c.mp4: its folder could not be made: the service refused to make it: 403 not here\n");
}

TEST_F(BackupAlbumTest, WithoutAnyFolderTheBackupFails) {
    make("photos/a.jpg", "a picture");
    refuse("directory", 403, "not here", 0, 9);
    const auto result = backup();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(complete(0, 1, 100012, "Create path error")));
    EXPECT_THAT(result.error, HasSubstr("the backup of the album failed: Create path error (100012)\n"));
    expectNoLock("101");
}

TEST_F(BackupAlbumTest, ACancelAtOnceEndsTheRunAndLeavesNoLock) {
    make("photos/a.jpg", "a picture");
    const auto result = backup({"--cancel-after", "0"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(complete(0, 0, 100009, "User cancel")));
    expectNoLock("101");
}

TEST_F(BackupAlbumTest, AtCtrlCThePicturesUnderWayEndAndTheRecordHoldsTrueCounts) {
    for (int number = 0; number < 60; ++number) {
        const auto text = std::to_string(number);
        make("photos/" + text + ".jpg", "picture " + text);
    }
    stall("POST", "/quillbox/ose/v1/files/complete", 2);
    QuillboxProcess process(line({"--json"}), signedIn());
    // The library lets go of the run when the first result has been told.
    ASSERT_TRUE(process.waitForOutput(progress(2, 0)));
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for the files that are being sent"));
    release();
    EXPECT_EQ(process.wait(), 130);
    const auto there = static_cast<int>(json({"ls", idOf("Images")}).lines.size());
    EXPECT_LT(there, 60);
    EXPECT_EQ(process.lines().back(), complete(there, 60 - there));
    EXPECT_EQ(propertiesOfRecord("101"), counts(there, 60 - there));
    EXPECT_THAT(temporaryFiles(), IsEmpty());
    expectNoLock("101");
}

TEST_F(BackupAlbumTest, WhatVanishesAfterItWasListedFailsAlone) {
    make("photos/a.jpg", "a picture");
    make("photos/b.jpg", "another one");
    make("photos/c.mp4", "a video");
    stall("POST", "/quillbox/ose/v1/directory");
    QuillboxProcess process(line({"--json"}), signedIn());
    ASSERT_TRUE(waitForStall());
    fs::remove(home_ / "photos/b.jpg");
    fs::remove(home_ / "photos/c.mp4");
    release();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(process.lines().back(), complete(1, 2));
    EXPECT_EQ(process.error(),
              "photos/b.jpg: No such file or directory\nphotos/c.mp4: No such file or directory\n");
    EXPECT_THAT(temporaryFiles(), IsEmpty());
    expectNoLock("101");
}

TEST_F(BackupAlbumTest, ACopyGoesWhenItsPictureIsDone) {
    for (int number = 0; number < 20; ++number)
        make("photos/" + std::to_string(number) + ".jpg", "picture " + std::to_string(number));
    stall("POST", createPath, 19);
    QuillboxProcess process(line({"--json"}), signedIn());
    ASSERT_TRUE(process.waitForOutput(progress(19, 0)));
    ASSERT_THAT(temporaryFiles(), SizeIs(1));
    EXPECT_LE(std::distance(fs::directory_iterator(temporaryFiles().front()), fs::directory_iterator()), 1);
    release();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_THAT(temporaryFiles(), IsEmpty());
}

TEST_F(BackupAlbumTest, WithoutAPhotosFolderTheCommandLineCannotBeUsed) {
    const auto result = text({"backup", "album", "--device-id", "7"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("--photos"));
}

}  // namespace
}  // namespace quillbox_test
