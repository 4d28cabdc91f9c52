#include "baseapi/testkit/engine_doubles.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

using namespace baseapi;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Upload = UploadProcessResult;

/// What happened, one line for each event.
class Events {
  public:
    UploadProcessCallback ofUpload() {
        return [this](const Upload& event) {
            event.visit([&](const Upload::onProgress& it) { add("progress " + std::to_string(it.bytes)); },
                        [&](const Upload::onSuccess& it) { add("success " + it.msg); },
                        [&](const Upload::onFailure& it) { add("failure " + it.errMsg); },
                        [](const auto&) {});
        };
    }
    DownloadProgress ofProgress() {
        return [this](double fraction) { add("progress " + std::to_string(std::lround(fraction * 100))); };
    }
    DownloadCompletion ofDownload() {
        return [this](const DownloadResult& result) {
            result.visit([&](const DownloadResult::success& it) { add("success " + it.file.text()); },
                         [&](const DownloadResult::failure& it) { add("failure " + it.message); });
        };
    }
    BackupCallback ofBackup() {
        return [this](const BackupResult& event) {
            event.visit(
                [&](const BackupResult::onComplete& it) { add("complete " + it.msg); },
                [&](const BackupResult::onProgress& it) { add("done " + std::to_string(it.succCount)); });
        };
    }
    BackupResultHandler ofContacts() {
        return {
            .onComplete =
                [this](const BackupContactResult& result) {
                    result.visit(
                        [&](const BackupContactResult::success& it) { add("complete " + it.message); },
                        [&](const BackupContactResult::failure& it) { add("failure " + it.errorMessage); });
                },
            .onProgress = [this](const BackupProgress& it) { add("percent " + std::to_string(it.percent)); }};
    }
    ContactCallback ofRestore() {
        return [this](const ContactResult& event) {
            event.visit([&](const ContactResult::onFailure& it) { add("failure " + it.message); },
                        [&](const auto& it) { add("event of " + it.hash); });
        };
    }

    const std::vector<std::string>& lines() const { return lines_; }

  private:
    void add(std::string line) { lines_.push_back(std::move(line)); }

    std::vector<std::string> lines_;
};

TEST(TransferDouble, ReportsTheEventsOfAnUploadAndRecordsIt) {
    testkit::TransferDouble transfer;
    auto upload = transfer.at<&ITransfer::uploadFile>();
    upload.report(Upload{Upload::onProgress{.bytes = 5}}, Upload{Upload::onSuccess{.msg = "success"}});
    Events events;
    const auto handle = transfer.uploadFile("folder", URL::file("/a"), "", 2, nullptr, events.ofUpload());
    EXPECT_THAT(events.lines(), ElementsAre("progress 5", "success success"));
    const auto [cloudPath, file, fileId, autoRename, sliceFile] = upload.calls().at(0);
    EXPECT_EQ(cloudPath, "folder");
    EXPECT_EQ(file, URL::file("/a"));
    EXPECT_EQ(autoRename, 2);
}

TEST(TransferDouble, CountsTheCancelsOfItsHandles) {
    testkit::TransferDouble transfer;
    transfer.hold();
    Events events;
    const auto handle = transfer.backupUploadFile("folder", URL::file("/a"), "", "record", "lock", 0, nullptr,
                                                  events.ofUpload());
    handle->cancel();
    EXPECT_EQ(transfer.at<&ITransfer::backupUploadFile>().cancels(), 1U);
    EXPECT_THAT(events.lines(), IsEmpty());
    EXPECT_TRUE(transfer.deliver());
    EXPECT_THAT(events.lines(), ElementsAre("failure no answer is queued for backupUploadFile"));
}

TEST(TransferDouble, GivesEachEventOfADownloadToTheCallbackThatTakesIt) {
    testkit::TransferDouble transfer;
    transfer.at<&ITransfer::downloadFile>().report(
        0.5, DownloadResult{DownloadResult::success{URL::file("/copy")}});
    Events events;
    const URL address("https://example.org/a");
    transfer.downloadFile(address, "7", URL::file("/copy"), events.ofProgress(), events.ofDownload());
    transfer.downloadFile(address, "7", URL::file("/copy"), nullptr, events.ofDownload());
    EXPECT_THAT(events.lines(),
                ElementsAre("progress 50", "success /copy", "failure no answer is queued for downloadFile"));
}

TEST(PhoneBackupDouble, BeginsARunUnlessTheTestRefusesIt) {
    testkit::PhoneBackupDouble backup;
    auto album = backup.at<&IPhoneBackup::backupAlbum>();
    album.report(BackupResult{BackupResult::onProgress{.succCount = 3}},
                 BackupResult{BackupResult::onComplete{.succCount = 3, .msg = "over"}});
    album.give(false);
    Events events;
    EXPECT_TRUE(backup.backupAlbum("", 7, events.ofBackup()));
    EXPECT_FALSE(backup.backupAlbum("", 7, events.ofBackup()));
    EXPECT_TRUE(backup.backupDirs("", 7, events.ofBackup()));
    EXPECT_THAT(events.lines(),
                ElementsAre("done 3", "complete over", "complete no answer is queued for backupDirs"));
    EXPECT_EQ(std::get<1>(album.calls().at(0)), 7);
}

TEST(PhoneBackupDouble, ReportsABackupOfTheContactsToBothItsHandlers) {
    testkit::PhoneBackupDouble backup;
    backup.at<&IPhoneBackup::backupContact>().report(
        BackupProgress{.percent = 40}, BackupContactResult{BackupContactResult::success{0, "over"}});
    Events events;
    EXPECT_TRUE(backup.backupContact("", 7, 0, events.ofContacts()));
    EXPECT_TRUE(backup.backupContact("", 7, 0, events.ofContacts()));
    EXPECT_THAT(events.lines(),
                ElementsAre("percent 40", "complete over", "failure no answer is queued for backupContact"));
}

TEST(PhoneBackupDouble, ReportsARestoreAndHandsOutWhatCancels) {
    testkit::PhoneBackupDouble backup;
    backup.at<&IPhoneBackup::restoreContact>().report(ContactResult{ContactResult::onSuccess{.hash = "h"}});
    Events events;
    backup.restoreContact("h", "record", 0, events.ofRestore());
    backup.restoreContact("h", "record", 0, events.ofRestore());
    EXPECT_THAT(events.lines(), ElementsAre("event of h", "failure no answer is queued for restoreContact"));
    auto manager = backup.at<&IPhoneBackup::getBackupManager>();
    manager.give(nullptr);
    EXPECT_EQ(backup.getBackupManager("103"), nullptr);
    backup.getBackupManager("101")->cancel();
    EXPECT_EQ(manager.cancels(), 1U);
    EXPECT_THAT(manager.calls(), ElementsAre("103", "101"));
}

TEST(SliceFileDouble, GivesTheTextThatWasQueuedAndThenNothing) {
    testkit::SliceFileDouble slicer;
    slicer.at<&ISliceFile::calcSha256>().give("{}");
    EXPECT_EQ(slicer.calcSha256(URL::file("/a")), "{}");
    EXPECT_EQ(slicer.calcSha256(URL::file("/b")), std::nullopt);
    EXPECT_THAT(slicer.at<&ISliceFile::calcSha256>().calls(), ElementsAre(URL::file("/a"), URL::file("/b")));
    EXPECT_THAT(slicer.unanswered(), ElementsAre("calcSha256"));
}

}  // namespace
