#include <sys/stat.h>

#include "tests/cli/backup_test.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

const std::string create = "/quillbox/ose/v1/files/create";

class BackupDirsTest : public BackupTest {
  protected:
    static std::vector<std::string> line(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"backup", "dirs", "--device-id", "7"});
        return more;
    }
    Outcome backup(std::vector<std::string> more = {}) const { return json(line(std::move(more))); }
    void addScope(const std::string& folder, const std::string& target = "/backup") const {
        fs::create_directories(home_ / folder);
        EXPECT_EQ(json({"scope-add", folder, target, "--device-id", "7"}).status, 0);
    }
    /// A scope of this many small files.
    void addFiles(int count) const {
        for (int number = 0; number < count; ++number)
            make("notes/" + std::to_string(number), "content of " + std::to_string(number));
        addScope("notes");
    }
    std::string cloudFolder() const { return idOf("backup"); }
    int verify(const std::string& folder) const {
        return json({"verify", folder, "--parent", cloudFolder()}).status;
    }
    std::string local(const std::string& path) const { return (home_ / path).string(); }
};

TEST_F(BackupDirsTest, AFileGoesUpAndTheEventsTellOfIt) {
    make("notes/deep/a", "hello");
    addScope("notes");
    stall("POST", create);
    QuillboxProcess process(line({"--json"}), signedIn());
    ASSERT_TRUE(process.waitForOutput("\n"));
    release();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_THAT(process.lines(), ElementsAre(progress(0, 0), complete(1, 0)));
    EXPECT_THAT(process.error(), IsEmpty());
    EXPECT_EQ(verify("notes"), 0);
    EXPECT_EQ(propertiesOfRecord("100"), counts(1, 0));
    expectNoLock("100");
}

TEST_F(BackupDirsTest, ADeviceWithoutScopesIsBackedUpWithAWarning) {
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.lines, ElementsAre(complete(0, 0)));
    EXPECT_EQ(result.error,
              "quillbox: warning: the device has no folder to back up; quillbox scope-add adds one\n");
    expectNoLock("100");
}

TEST_F(BackupDirsTest, AScopeWhoseFolderIsNotThereIsWarnedOf) {
    addScope("gone");
    fs::remove(home_ / "gone");
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.lines, ElementsAre(complete(0, 0)));
    EXPECT_EQ(result.error,
              "quillbox: warning: " + local("gone") + " is no folder here; nothing of it is backed up\n");
}

TEST_F(BackupDirsTest, ASecondBackupMovesNoContent) {
    addFiles(3);
    EXPECT_EQ(backup().status, 0);
    EXPECT_EQ(sent("PUT "), 3);
    const auto again = backup();
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.lines.back(), complete(3, 0));
    EXPECT_THAT(again.error, IsEmpty());
    EXPECT_EQ(sent("PUT "), 3);
    EXPECT_EQ(verify("notes"), 0);
}

TEST_F(BackupDirsTest, FilesThatFailAreToldByNameAtTheEndAndCounted) {
    addFiles(2);
    ASSERT_EQ(::mkfifo((home_ / "notes/pipe").c_str(), 0600), 0);
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), complete(2, 1));
    EXPECT_EQ(result.error, local("notes/pipe") + ": no regular file\n");
    EXPECT_EQ(propertiesOfRecord("100"), counts(2, 1));
}

TEST_F(BackupDirsTest, WithFailOnPartialFailedFilesAreAStatusOfTheirOwn) {
    addFiles(1);
    EXPECT_EQ(backup({"--fail-on-partial"}).status, 0);
    ASSERT_EQ(::mkfifo((home_ / "notes/pipe").c_str(), 0600), 0);
    EXPECT_EQ(backup({"--fail-on-partial"}).status, 4);
    EXPECT_EQ(backup({"--fail-on-partial", "--cancel-after", "0"}).status, 1);
}

TEST_F(BackupDirsTest, EachFileHasItsOwnCause) {
    addFiles(4);
    refuse("files/create", 507, "quota exceeded");
    plan(R"({"verb":"PUT","path":"/_part/*","after":0,"times":1,"kind":"reset"})");
    refuse("files/complete", 409, "a part is missing");
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), complete(1, 3));
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 3) << result.error;
    EXPECT_THAT(result.error,
                AllOf(HasSubstr(": the service refused to create it: 507 quota exceeded\n"),
                      HasSubstr(": a part could not be sent: "),
                      HasSubstr(": the service refused to complete it: 409 a part is missing\n")));
}

TEST_F(BackupDirsTest, FilesOfAFolderThatCouldNotBeMadeAreToldWithTheFoldersCause) {
    make("notes/deep/a", "a");
    make("notes/b", "b");
    addScope("notes");
    // "backup", "notes", and then "deep".
    refuse("directory", 403, "not here", 2);
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), complete(1, 1));
    EXPECT_EQ(result.error,
              local("notes/deep/a") +
                  ": its folder could not be made: the service refused to make it: 403 not here\n");
}

TEST_F(BackupDirsTest, AScopeInsideAnotherIsWarnedOf) {
    make("tree/inner/a.txt", "a");
    addScope("tree", "/one");
    addScope("tree/inner", "/two");
    const auto result = backup();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), complete(1, 1));
    EXPECT_EQ(result.error, "quillbox: warning: " + local("tree/inner") + " lies in the scope " +
                                local("tree") +
                                " too; its files are sent for both, and counted as failed once each\n");
}

TEST_F(BackupDirsTest, TheWalkIsLoggedOnce) {
    const std::string linkLine = "generateFileDetailBeans link leads back : ";
    make("tree/a.txt", "a");
    fs::create_directory_symlink(".", home_ / "tree/loop");
    addScope("tree", "/one");
    EXPECT_EQ(backup({"--log", local("log")}).status, 0);
    const auto log = contentOf(home_ / "log");
    const auto told = log.find(linkLine);
    ASSERT_NE(told, log.npos);
    EXPECT_EQ(log.find(linkLine, told + 1), log.npos);
}

TEST_F(BackupDirsTest, WhatMayNotBeReadIsTold) {
    addFiles(1);
    make("notes/secret", "x");
    make("notes/locked/inside", "x");
    fs::permissions(home_ / "notes/secret", fs::perms::none);
    fs::permissions(home_ / "notes/locked", fs::perms::none);
    auto settings = signedIn();
    settings.withoutRootRights = true;
    const auto result = quillbox_test::run(line({"--json"}), settings);
    fs::permissions(home_ / "notes/locked", fs::perms::owner_all);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), complete(1, 1));
    EXPECT_EQ(result.error, local("notes/locked") + ": the folder cannot be read whole: Permission denied\n" +
                                local("notes/secret") + ": Permission denied\n");
}

TEST_F(BackupDirsTest, ForPeopleThereIsALineAndNoProgress) {
    addFiles(2);
    const auto result = text(line());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "ok    the backup of the folders: 2 files backed up, 0 failed\n");
    EXPECT_THAT(result.error, IsEmpty());
}

// A run that the service stops.

TEST_F(BackupDirsTest, ALockThatIsRefusedIsAFailure) {
    refuse("backup/lock", 423, "locked by another device");
    const auto result = backup();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(complete(0, 0, 423, "locked by another device")));
    EXPECT_EQ(
        result.error,
        "quillbox: the backup of the folders failed: the service refused a request of it: 423 locked by "
        "another device\n");
}

TEST_F(BackupDirsTest, AServiceThatIsGoneIsAFailure) {
    addFiles(1);
    service_.kill();
    const auto result = backup();
    EXPECT_EQ(result.status, 1);
    ASSERT_THAT(result.lines, testing::SizeIs(1));
    EXPECT_THAT(result.lines[0], HasSubstr(R"("code":-1,"msg":"request error )"));
    EXPECT_THAT(result.error, HasSubstr("the service did not answer"));
}

// Cancelling.

TEST_F(BackupDirsTest, ACancelAtOnceEndsTheRunAndLeavesNoLock) {
    addFiles(3);
    for (int attempt = 0; attempt < 5; ++attempt) {
        const auto result = backup({"--cancel-after", "0"});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.lines, ElementsAre(complete(0, 0, 100009, "User cancel")));
        EXPECT_THAT(result.error, HasSubstr("quillbox: the backup of the folders was cancelled\n"));
        expectNoLock("100");
    }
    EXPECT_EQ(sent("PUT "), 0);
}

TEST_F(BackupDirsTest, ACancelBeforeTheFirstResultClosesTheRecord) {
    addFiles(3);
    stall("GET", "/quillbox/ose/v1/backup/device/*");
    QuillboxProcess process(line({"--json", "--cancel-after", "0.3"}), signedIn());
    ASSERT_TRUE(process.waitForOutput("\n"));
    release();
    EXPECT_EQ(process.wait(), 1);
    EXPECT_THAT(process.lines(), ElementsAre(complete(0, 0, 100009, "User cancel")));
    EXPECT_EQ(propertiesOfRecord("100"), counts(0, 0, 100009));
    expectNoLock("100");
}

TEST_F(BackupDirsTest, ACancelThroughTheLibraryDoesNothingAfterTheFirstResult) {
    addFiles(3);
    stall("POST", "/quillbox/ose/v1/files/complete");
    const auto cancelled = std::chrono::steady_clock::now() + std::chrono::milliseconds(1500);
    QuillboxProcess process(line({"--json", "--cancel-after", "1.5"}), signedIn());
    ASSERT_TRUE(process.waitForOutput("\n"));
    if (std::chrono::steady_clock::now() > cancelled) GTEST_SKIP() << "the first result came too late";
    // Nothing tells of a cancel that does nothing.
    std::this_thread::sleep_until(cancelled + std::chrono::seconds(1));
    release();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(process.lines().back(), complete(3, 0));
}

TEST_F(BackupDirsTest, AtCtrlCTheFilesUnderWayEndAndTheRecordHoldsTrueCounts) {
    addFiles(60);
    stall("POST", "/quillbox/ose/v1/files/complete", 2);
    QuillboxProcess process(line({"--json"}), signedIn());
    // The library lets go of the run when the first result has been told.
    ASSERT_TRUE(process.waitForOutput(progress(2, 0)));
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for the files that are being sent; no further one is begun"));
    release();
    EXPECT_EQ(process.wait(), 130);
    const auto there = static_cast<int>(json({"ls", idOf("notes", cloudFolder())}).lines.size());
    EXPECT_LT(there, 60);
    EXPECT_EQ(process.lines().back(), complete(there, 60 - there));
    EXPECT_EQ(propertiesOfRecord("100"), counts(there, 60 - there));
    EXPECT_THAT(process.error(),
                HasSubstr(std::to_string(60 - there) + " files not sent, as the backup was stopped\n"));
    EXPECT_THAT(process.error(), Not(HasSubstr(home_.path().string())));
    expectNoLock("100");
}

TEST_F(BackupDirsTest, AtCtrlCBeforeTheFirstResultTheRunIsCancelled) {
    addFiles(3);
    stall("GET", "/quillbox/ose/v1/backup/device/*");
    QuillboxProcess process(line({"--json"}), signedIn());
    ASSERT_TRUE(waitForRequest("POST /quillbox/ose/v1/backup/record"));
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for the backup of the folders to close"));
    release();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_THAT(process.lines(), ElementsAre(complete(0, 0, 100009, "User cancel")));
    expectNoLock("100");
}

TEST_F(BackupDirsTest, TheSecondCtrlCEndsTheProcess) {
    addFiles(3);
    stall("POST", create);
    QuillboxProcess process(line({"--json"}), signedIn());
    ASSERT_TRUE(process.waitForOutput("\n"));
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for"));
    process.interrupt();
    EXPECT_EQ(process.wait(), 130);
    release();
    EXPECT_EQ(backup().status, 0);
}

// What would be sent.

TEST_F(BackupDirsTest, ADryRunTellsWhatWouldBeSentAndSendsNothing) {
    make("notes/a", "hello");
    make("notes/deep/b", "");
    addScope("notes");
    ASSERT_EQ(::mkfifo((home_ / "notes/pipe").c_str(), 0600), 0);
    fs::create_symlink("nowhere", home_ / "notes/dangling");
    const auto before = journal().size();
    const auto result = backup({"--dry-run"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.lines, ElementsAre(R"({"event":"file","file":")" + local("notes/a") +
                                              R"(","bytes":5,"cloudPath":"/backup/notes"})",
                                          R"({"event":"file","file":")" + local("notes/deep/b") +
                                              R"(","bytes":0,"cloudPath":"/backup/notes/deep"})",
                                          R"({"event":"total","files":2,"bytes":5})"));
    EXPECT_EQ(result.error, local("notes/pipe") + ": would not be sent: no regular file\n");
    const auto after = journal();
    EXPECT_EQ(after.size(), before + 1);
    EXPECT_THAT(after.back(), HasSubstr("GET /quillbox/ose/v1/backup/device/7/scope"));
    EXPECT_THAT(text(line({"--dry-run"})).output, EndsWith("2 files, 5 B\n"));
}

TEST_F(BackupDirsTest, ADryRunThatTheServiceRefusesFails) {
    const auto result = backup({"--dry-run", "--token", "wrong"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(HasSubstr(R"({"event":"failure","code":)")));
}

// Command lines.

TEST_F(BackupDirsTest, ACommandLineThatMissesSomethingCannotBeUsed) {
    for (const auto& [arguments, why] : std::vector<std::pair<std::vector<std::string>, std::string>>{
             {{"backup"}, "quillbox backup --help"},
             {{"backup", "nothing"}, "there is no command backup nothing; see quillbox backup --help"},
             {{"backup", "dirs"}, "--device-id"},
             {{"backup", "dirs", "--device-id", "x"}, "--device-id"},
             {{"backup", "dirs", "--device-id", "7", "--cancel-after", "-1"}, "--cancel-after"},
             {{"backup", "contacts", "--device-id", "7"}, "--address-book"},
             {{"restore", "contacts", "--record", "1"}, "--address-book"},
             {{"restore", "contacts", "--address-book", "."}, "--record"}}) {
        const auto result = text(arguments);
        EXPECT_EQ(result.status, 2) << why;
        EXPECT_THAT(result.output, IsEmpty());
        EXPECT_THAT(result.error, HasSubstr(why));
        EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
    }
}

TEST_F(BackupDirsTest, SessionOptionsStandAnywhereOnTheLine) {
    for (const auto& arguments :
         std::vector<std::vector<std::string>>{{"--json", "backup", "dirs", "--device-id", "7"},
                                               {"backup", "--json", "dirs", "--device-id", "7"},
                                               {"backup", "dirs", "--device-id", "7", "--json"}})
        EXPECT_THAT(text(arguments).lines, ElementsAre(complete(0, 0)));
    EXPECT_THAT(text({"backup", "dirs", "--help"}).output, HasSubstr("--cancel-after"));
    EXPECT_THAT(text({"backup", "--help"}).output, HasSubstr("contacts"));
}

}  // namespace
}  // namespace quillbox_test
