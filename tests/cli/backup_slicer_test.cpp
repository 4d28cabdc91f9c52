#include "cli/backup_slicer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

#include "tests/support/temporary_folder.h"

namespace quillbox {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class BackupSlicerTest : public testing::Test {
  protected:
    baseapi::URL fileOf(std::size_t size) const {
        std::ofstream(folder_ / "file") << std::string(size, 'x');
        return baseapi::URL::file(folder_ / "file");
    }
    /// Has the library slice the file, with what it says where it gets nothing.
    void slice(BackupSlicer& slicer, const baseapi::URL& file) {
        if (slicer.calcSha256(file)) return;
        constexpr std::string_view line[] = {"filesCreateRequest get sha256 nil"};
        journal_->read(line);
    }

    const test_support::TemporaryFolder folder_;
    const std::shared_ptr<BackupJournal> journal_ = std::make_shared<BackupJournal>();
};

TEST_F(BackupSlicerTest, AFileThatIsNotToBeSentFailsWithItsObstacle) {
    BackupSlicer slicer(journal_, [](const auto&) { return BackupSlicer::Item{"file", "too odd", nullptr}; });
    slice(slicer, fileOf(1));
    ASSERT_THAT(journal_->failures(), SizeIs(1));
    EXPECT_EQ(journal_->failures()[0].cause, "too odd");
}

TEST_F(BackupSlicerTest, AFileThatCannotBeReadFailsWithTheReason) {
    BackupSlicer slicer(journal_, [](const auto&) { return BackupSlicer::Item{"file", {}, nullptr}; });
    slice(slicer, baseapi::URL::file(folder_ / "absent"));
    ASSERT_THAT(journal_->failures(), SizeIs(1));
    EXPECT_EQ(journal_->failures()[0].cause, "No such file or directory");
}

TEST_F(BackupSlicerTest, NothingBeginsOnceItIsStopped) {
    BackupSlicer slicer(journal_, [](const auto&) { return BackupSlicer::Item{"file", {}, nullptr}; });
    slicer.stop();
    slice(slicer, fileOf(1));
    EXPECT_THAT(journal_->failures(), IsEmpty());
}

TEST_F(BackupSlicerTest, AFileThatIsStoppedInTheMiddleHasNotFailed) {
    const auto file = fileOf(4 << 20);
    for (int round = 0; round < 30; ++round) {
        std::atomic<bool> begun = false;
        BackupSlicer slicer(journal_, [&](const auto&) {
            begun = true;
            return BackupSlicer::Item{"file", {}, nullptr};
        });
        std::thread library([&] { slice(slicer, file); });
        while (!begun) std::this_thread::yield();
        for (int turn = 0; turn < round; ++turn) std::this_thread::yield();
        slicer.stop();
        library.join();
    }
    for (const auto& failure : journal_->failures()) EXPECT_EQ(failure.cause, std::nullopt);
}

}  // namespace
}  // namespace quillbox
