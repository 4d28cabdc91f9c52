#include "baseapi/transfer/upload_task.h"

#include <sys/stat.h>

#include "tests/support/awaited.h"
#include "tests/transfer/upload_fixture.h"

namespace baseapi {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class UploadTaskTest : public UploadTest {
  protected:
    std::shared_ptr<UploadTask> taskFor(const URL& file, std::int64_t offset, std::int64_t length) {
        auto task = std::make_shared<UploadTask>();
        task->hash1 = "1" + std::to_string(offset);
        task->uploadUrl = server_->url("/part/1");
        task->file = file;
        task->offset = offset;
        task->length = length;
        task->onCallback = [this](const UploadResult& result) {
            std::lock_guard lock(mutex_);
            result.visit(
                [&](const UploadResult::onSuccess& it) {
                    ends_.push_back("onSuccess " + it.hash + " " + it.response.msg.value_or("nil"));
                },
                [&](const UploadResult::onFailure& it) {
                    ends_.push_back("onFailure " + it.hash + " " + std::to_string(it.code) + " " +
                                    it.message);
                },
                [&](const UploadResult::onProgress& it) { progress_.push_back(it); });
        };
        return task;
    }
    /// Returns when the part has reported.
    static void execute(std::shared_ptr<UploadTask> task) {
        test_support::awaited<bool>([&](auto ended) { run(std::move(task), std::move(ended)); });
    }
    std::string sentBody() const { return server_->requests().at(0).body; }

    static Detached run(std::shared_ptr<UploadTask> task, std::function<void(bool)> ended) {
        co_await task->execute();
        ended(true);
    }

    std::vector<std::string> ends_;
    std::vector<UploadResult::onProgress> progress_;
    std::mutex mutex_;
};

TEST_F(UploadTaskTest, SendsItsRangeOfTheFileWithoutTheSessionsHeaders) {
    on("PUT /part/1", 200);
    execute(taskFor(fileOf("0123456789"), 2, 5));
    EXPECT_THAT(ends_, ElementsAre("onSuccess 12 success"));
    EXPECT_EQ(sentBody(), "23456");
    const auto request = server_->requests().at(0);
    EXPECT_EQ(request.header("Content-Type"), "application/octet-stream");
    EXPECT_EQ(request.header("Content-Length"), "5");
    EXPECT_FALSE(request.header("Authorization"));
    EXPECT_FALSE(request.header("X-Traceid"));
}

TEST_F(UploadTaskTest, ReportsProgressUnderItsSubHash) {
    on("PUT /part/1", 200);
    execute(taskFor(fileOf("0123456789"), 0, 10));
    ASSERT_FALSE(progress_.empty());
    EXPECT_EQ(progress_.back().hash, "10");
    EXPECT_EQ(progress_.back().bytesWritten, 10);
    EXPECT_EQ(progress_.back().totalBytes, 10);
    EXPECT_TRUE(logged("UploadTask: onProgress - 10, bytesWritten = 10, totalBytes = 10"));
}

TEST_F(UploadTaskTest, LogsItsSteps) {
    on("PUT /part/1", 200);
    execute(taskFor(fileOf("0123456789"), 0, 10));
    EXPECT_TRUE(logged("UploadTask: 开始执行上传任务"));
    EXPECT_TRUE(logged("UploadTask: start upload, hash = 10"));
    EXPECT_TRUE(logged("UploadTask: onSuccess ret = success"));
}

TEST_F(UploadTaskTest, SendsWhatThereIsOfAPartBehindTheEndOfTheFile) {
    on("PUT /part/1", 200);
    execute(taskFor(fileOf("0123456789"), 8, std::int64_t{1} << 60));
    EXPECT_THAT(ends_, ElementsAre("onSuccess 18 success"));
    EXPECT_EQ(sentBody(), "89");
}

TEST_F(UploadTaskTest, SendsNothingOfAPartThatBeginsBehindTheEnd) {
    on("PUT /part/1", 200);
    execute(taskFor(fileOf("0123456789"), 100, 5));
    EXPECT_THAT(ends_, ElementsAre("onSuccess 1100 success"));
    EXPECT_EQ(server_->requests().at(0).header("Content-Length"), "0");
}

TEST_F(UploadTaskTest, CountsAnyStatusAsSuccess) {
    on("PUT /part/1", 403, "expired");
    execute(taskFor(fileOf("0123456789"), 0, 10));
    EXPECT_THAT(ends_, ElementsAre("onSuccess 10 success"));
}

TEST_F(UploadTaskTest, FailsWithItsOwnWordsWhenTheConnectionBreaks) {
    on("PUT /part/1", [](Exchange& exchange) { exchange.reset(); });
    execute(taskFor(fileOf("0123456789"), 0, 10));
    EXPECT_THAT(ends_, ElementsAre("onFailure 10 -1 upload sync error"));
    EXPECT_THAT(test_support::recordingLog().lines(),
                testing::Contains(StartsWith("UploadTask: onFailure ret = ")));
    EXPECT_EQ(server_->requestCount(), 1U);  // one attempt
}

TEST_F(UploadTaskTest, FailsWhenTheAnswerIsNotWhole) {
    for (const auto* answer :
         {"", "HTTP/1.1 200 OK\r\nContent-", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nab"}) {
        on("PUT /part/1", [=](Exchange& exchange) {
            exchange.send(answer);
            exchange.close();
        });
        ends_.clear();
        execute(taskFor(fileOf("0123456789"), 0, 10));
        EXPECT_THAT(ends_, ElementsAre("onFailure 10 -1 upload sync error")) << answer;
    }
    EXPECT_EQ(server_->requestCount(), 3U);
}

TEST_F(UploadTaskTest, RunsAlsoWhereNobodyListens) {
    on("PUT /part/1", 200);
    const auto task = taskFor(fileOf("0123456789"), 0, 10);
    task->onCallback = nullptr;
    execute(task);
    EXPECT_EQ(sentBody(), "0123456789");
}

TEST_F(UploadTaskTest, FailsForAnAddressThatIsNone) {
    const auto task = taskFor(fileOf("0123456789"), 0, 10);
    task->uploadUrl = "http://a b/";
    execute(task);
    EXPECT_THAT(ends_, ElementsAre("onFailure 10 -1 upload sync error"));
    EXPECT_TRUE(logged("UploadTask: onFailure ret = url invalid"));
}

TEST_F(UploadTaskTest, RefusesAMissingAddressOrFile) {
    const auto withoutAddress = taskFor(fileOf("0123456789"), 0, 10);
    withoutAddress->uploadUrl = "";
    execute(withoutAddress);
    const auto withoutFile = taskFor(fileOf("0123456789"), 0, 10);
    withoutFile->file = std::nullopt;
    execute(withoutFile);
    EXPECT_THAT(ends_, ElementsAre("onFailure 10 -1 invalid params", "onFailure 10 -1 invalid params"));
    EXPECT_TRUE(logged("UploadTask: file or uploadUrl is null"));
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(UploadTaskTest, SendsNothingOnceItIsCancelled) {
    const auto task = taskFor(fileOf("0123456789"), 0, 10);
    task->cancel();
    execute(task);
    EXPECT_THAT(ends_, ElementsAre("onFailure 10 -1 has cancel"));
    EXPECT_TRUE(logged("UploadTask cancel"));
    EXPECT_TRUE(logged("UploadTask: upload has cancel"));
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(UploadTaskTest, FailsWhenItIsCancelledOnTheWireThoughTheServiceHasThePart) {
    const auto task = taskFor(fileOf("0123456789"), 0, 10);
    on("PUT /part/1", [&](Exchange& exchange) {
        task->cancel();
        exchange.answer(200);
    });
    execute(task);
    EXPECT_THAT(ends_, ElementsAre("onFailure 10 -1 has cancel"));
    EXPECT_TRUE(logged("UploadTask: has response but is cancel"));
    task->cancel();  // on a part that has ended: nothing
    EXPECT_EQ(ends_.size(), 1U);
}

TEST_F(UploadTaskTest, FailsForAFileThatCannotBeReadFromAPlace) {
    const auto pipe = folder_ / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    execute(taskFor(URL::file(pipe), 0, 10));
    EXPECT_THAT(ends_, ElementsAre("onFailure 10 -1 file exception " + pipe.string() + ": Illegal seek"));
    EXPECT_TRUE(logged("UploadTask: IOException " + pipe.string() + ": Illegal seek"));
}

TEST_F(UploadTaskTest, FailsForAFolder) {
    execute(taskFor(URL::file(folder_.path()), 0, 10));
    EXPECT_THAT(ends_, ElementsAre(HasSubstr("file exception " + folder_.path().string())));
}

using UploadTaskDeathTest = UploadTaskTest;

TEST_F(UploadTaskDeathTest, EndsTheProcessForAFileThatCannotBeOpened) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(execute(taskFor(URL::file(folder_ / "missing"), 0, 10)), "No such file");
}

TEST_F(UploadTaskDeathTest, EndsTheProcessForANegativeOffset) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(execute(taskFor(fileOf("0123456789"), -1, 10)), "offset is negative");
}

}  // namespace
}  // namespace baseapi
