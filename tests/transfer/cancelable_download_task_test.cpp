#include "baseapi/transfer/cancelable_download_task.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "baseapi/platform/platform.h"
#include "tests/support/event.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_platform.h"

namespace baseapi {
namespace {

using testing::Contains;
using testing::StartsWith;

TEST(CancelableDownloadTask, CancelsItsTransferAndDeletesItsFile) {
    const test_support::TemporaryFolder folder;
    test_support::ScriptedServer server([](test_support::Exchange& exchange) { exchange.hold(); });
    test_support::Event ended;
    TransportError::Kind kind = TransportError::Kind::failed;
    CancelableDownloadTask task;
    task.tempPath = (folder / "partial").string();
    std::ofstream(task.tempPath) << "x";
    task.session = platform().http;
    DownloadRequest request;
    request.url = server.url("/file");
    request.partialFile = folder / "other";
    task.downloadTask =
        task.session->downloadTask(std::move(request), nullptr, [&](const DownloadAnswer& answer) {
            kind = answer.error ? answer.error->kind : kind;
            ended.set();
        });
    task.downloadTask->resume();
    ASSERT_TRUE(server.waitForRequests(1));
    task.cancel();
    ASSERT_TRUE(ended.wait());
    EXPECT_EQ(kind, TransportError::Kind::cancelled);
    EXPECT_FALSE(std::filesystem::exists(task.tempPath));
}

TEST(CancelableDownloadTask, WithoutATransferOrAFileDoesNothing) {
    auto& log = test_support::recordingLog();
    log.clear();
    CancelableDownloadTask task;
    task.tempPath = "/no/such/file";
    task.cancel();
    EXPECT_TRUE(log.lines().empty());
}

TEST(CancelableDownloadTask, LogsThatItCouldNotDelete) {
    const test_support::TemporaryFolder folder;
    std::ofstream(folder / "inside") << "x";
    auto& log = test_support::recordingLog();
    CancelableDownloadTask task;
    task.tempPath = folder.path().string();  // a folder that is not empty
    task.cancel();
    EXPECT_THAT(log.lines(), Contains(StartsWith("cancel file error = ")));
}

}  // namespace
}  // namespace baseapi
