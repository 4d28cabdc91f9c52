#include "cli/backup_journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbox {

void PrintTo(const BackupJournal::Failure& failure, std::ostream* out) {
    *out << failure.file << (failure.begun ? " begun " : " waiting ") << failure.cause.value_or("-");
}
bool operator==(const BackupJournal::Failure& a, const BackupJournal::Failure& b) {
    return a.file == b.file && a.begun == b.begun && a.cause == b.cause;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Failure = BackupJournal::Failure;

class BackupJournalTest : public testing::Test {
  protected:
    void expect(const std::string& file, std::int64_t size, const std::string& cloudPath = "/to") {
        journal_.expect(file, size, std::make_shared<const std::string>(cloudPath));
    }
    void read(std::initializer_list<std::string_view> pieces) {
        journal_.read({pieces.begin(), pieces.end()});
    }
    void succeed(const std::shared_ptr<FileTrail>& trail) {
        const FileTrail::Scope scope(trail);
        read({"UploadOperation onSuccess code = ", "0", ", msg=", "success"});
    }
    void fail(const std::shared_ptr<FileTrail>& trail) {
        const FileTrail::Scope scope(trail);
        read({"filesCreateRequest failure code = ", "507", ", msg = ", "quota exceeded"});
    }

    const std::string refused_ = "the service refused to create it: 507 quota exceeded";
    BackupJournal journal_;
};

TEST_F(BackupJournalTest, WhatHasSucceededIsNoFailure) {
    expect("a", 1);
    succeed(journal_.begin("a"));
    EXPECT_THAT(journal_.failures(), IsEmpty());
}

TEST_F(BackupJournalTest, FailuresAreToldByNameWithTheirCause) {
    expect("b", 1);
    expect("a", 1);
    expect("c", 1);
    fail(journal_.begin("b"));
    journal_.begin("c");
    EXPECT_THAT(journal_.failures(),
                ElementsAre(Failure{"a", false, {}}, Failure{"b", true, refused_}, Failure{"c", true, {}}));
}

TEST_F(BackupJournalTest, TheThreadOfAFileLeavesItWithItsEnd) {
    expect("a", 1);
    FileTrail::ofThread() = journal_.begin("a");
    {
        const FileTrail::Scope scope(nullptr);
        FileTrail::leaveThread();
    }
    EXPECT_NE(FileTrail::ofThread(), nullptr);
    read({"UploadOperation onFailure errCode = ", "1", ", errMsg=", "file invaild"});
    EXPECT_EQ(FileTrail::ofThread(), nullptr);
}

TEST_F(BackupJournalTest, AFileThatStandsInTwoScopesIsToldForTheOneThatFails) {
    expect("a", 1, "/one");
    expect("a", 1, "/two");
    succeed(journal_.begin("a"));
    fail(journal_.begin("a"));
    EXPECT_THAT(journal_.failures(), ElementsAre(Failure{"a", true, refused_}));
}

TEST_F(BackupJournalTest, AFileOfAFolderThatWasRefusedIsToldWithTheFoldersCause) {
    expect("a", 1, "/one/inner");
    read({"new folder cloudPath = ", "/one", ", name = ", "inner"});
    read({"createSingleFolderSync failure code = ", "403", ", msg = ", "not here"});
    EXPECT_THAT(
        journal_.failures(),
        ElementsAre(Failure{"a", false,
                            "its folder could not be made: the service refused to make it: 403 not here"}));
}

TEST_F(BackupJournalTest, ProgressCountsWhatMovesAndWhatNeedNot) {
    std::vector<std::int64_t> bytes;
    journal_.onProgress = [&](const BackupJournal::Progress& now) {
        EXPECT_EQ(now.allBytes, 30);
        EXPECT_EQ(now.allFiles, 2U);
        bytes.push_back(now.bytes);
    };
    expect("a", 10);
    expect("b", 20);
    const auto a = journal_.begin("a");
    journal_.moved(*a, 4);
    succeed(a);
    succeed(a);
    succeed(journal_.begin("b"));
    EXPECT_THAT(bytes, ElementsAre(4, 10, 30));
}

TEST_F(BackupJournalTest, RequestsFindTheirFileOnce) {
    expect("a", 1);
    const auto trail = journal_.begin("a");
    baseapi::FilesCreateResponse response;
    response.fileId = "7";
    response.multiParts.emplace(1).front().uploadUrl = "http://part/1";
    journal_.created(trail, response);
    EXPECT_EQ(journal_.trailOfPart("http://part/1"), trail);
    EXPECT_EQ(journal_.trailOfPart("http://part/1"), nullptr);
    EXPECT_EQ(journal_.trailOfId("7"), trail);
    EXPECT_EQ(journal_.trailOfId("8"), nullptr);
}

TEST_F(BackupJournalTest, WhatTheWalkLeavesOutIsToldOnce) {
    read({"generateFileDetailBeans path failed : ", "/x", ", error: ", "Permission denied"});
    read({"generateFileDetailBeans path failed : ", "/x", ", error: ", "Permission denied"});
    read({"generateFileDetailBeans link leads back : ", "/y/loop"});
    EXPECT_THAT(journal_.leftOut(), ElementsAre("/x: the folder cannot be read whole: Permission denied",
                                                "/y/loop: left out, as it leads back to a folder above it"));
}

}  // namespace
}  // namespace quillbox
