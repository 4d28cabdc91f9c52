#include "baseapi/core/thread_pool_util.h"

#include <gmock/gmock.h>

#include "baseapi/core/backup_thread_pool_util.h"
#include "tests/support/test_platform.h"

namespace baseapi {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// One test: each queue is made once in a process.
TEST(ThreadPoolUtil, MakesEachQueueOnFirstUseAndLogsItsNumberOnce) {
    auto& log = test_support::recordingLog();
    log.clear();
    auto& parts = ThreadPoolUtil::queue();
    EXPECT_THAT(log.lines(), ElementsAre("CPU num = " + std::to_string(activeProcessorCount())));
    log.clear();
    auto& files = BackupThreadPoolUtil::queue();
    EXPECT_THAT(log.lines(), ElementsAre("CPU num = " + std::to_string(activeProcessorCount() / 2)));
    log.clear();

    EXPECT_EQ(&ThreadPoolUtil::queue(), &parts);
    EXPECT_EQ(&BackupThreadPoolUtil::queue(), &files);
    EXPECT_NE(&parts, &files);
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(parts.name(), "NORMAL_T");
    EXPECT_EQ(files.name(), "BACKUP_NORMAL");
    EXPECT_EQ(parts.width(), activeProcessorCount() / 2);
    EXPECT_EQ(files.width(), activeProcessorCount() / 2);
}

}  // namespace
}  // namespace baseapi
