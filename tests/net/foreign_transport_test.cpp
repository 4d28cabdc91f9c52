#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/net/http_helper.h"
#include "baseapi/platform/platform.h"
#include "tests/net/session.h"
#include "tests/support/event.h"

namespace baseapi {
namespace {

using testing::ElementsAre;

class ForeignTask : public HttpTask {
  public:
    explicit ForeignTask(std::function<void()> work, bool breaks = false)
        : work_(std::move(work)), breaks_(breaks) {}
    std::int64_t identifier() const override { return 1; }
    void resume() override {
        platform().delegateQueue->post(work_);
        if (breaks_) throw std::runtime_error("begun, and broken");
    }
    void cancel() override {}

  private:
    std::function<void()> work_;
    const bool breaks_;
};

/// A host's own transport, which keeps what it is asked for and answers as the test says.
class ForeignTransport : public HttpTransport {
  public:
    std::shared_ptr<HttpTask> dataTask(DataRequest request,
                                       std::function<void(DataAnswer)> completion) override {
        idleTimeouts.push_back(request.idleTimeout);
        if (refuses) throw std::runtime_error("no transport today");
        return std::make_shared<ForeignTask>([this, completion] { completion(answer); });
    }
    std::shared_ptr<HttpTask> uploadTask(
        UploadRequest request, Progress /*progress*/,
        std::function<void(std::optional<TransportError>)> completion) override {
        idleTimeouts.push_back(request.idleTimeout);
        return std::make_shared<ForeignTask>([completion] { completion(std::nullopt); }, breaks);
    }
    std::shared_ptr<HttpTask> downloadTask(DownloadRequest /*request*/, Progress /*progress*/,
                                           std::function<void(DownloadAnswer)> /*completion*/) override {
        return nullptr;
    }
    std::size_t running() const override { return 0; }

    DataAnswer answer;
    bool refuses = false;
    /// A part is sent, and its start throws all the same.
    bool breaks = false;
    std::vector<std::chrono::milliseconds> idleTimeouts;
};

class ForeignTransportTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        Platform parts;
        parts.http = transport_;
        parts.log = log_;
        usePlatform(std::move(parts));
        CloudInstance::shared().host = "https://cloud.example";
    }
    void SetUp() override {
        log_->clear();
        transport_->answer = {.status = 200, .body = "{}"};
        transport_->refuses = transport_->breaks = false;
        transport_->idleTimeouts.clear();
    }

    NetworkFailure failureOfACall() {
        start<ProbeRequest>(HTTPMethod::get, outcome_.callback());
        return outcome_.failure();
    }

    static inline const auto transport_ = std::make_shared<ForeignTransport>();
    static inline const auto log_ = std::make_shared<test_support::RecordingLog>();
    Outcome outcome_;
};

TEST_F(ForeignTransportTest, IsUsedInPlaceOfTheLibrarysOwn) {
    transport_->answer = {.status = 200, .body = R"({"code":7})"};
    start<ProbeRequest>(HTTPMethod::get, outcome_.callback());
    EXPECT_EQ(outcome_.record().code, 7);
}

TEST_F(ForeignTransportTest, MayGiveAnAnswerThatIsNoHttp) {
    transport_->answer = {};
    EXPECT_EQ(failureOfACall(), (NetworkFailure{-1, "response not HTTPURLResponse"}));
    EXPECT_TRUE(log_->contains("响应不是 HTTPURLResponse 类型"));
}

TEST_F(ForeignTransportTest, GivesTheTextOfItsErrorToTheCallback) {
    transport_->answer = {.error = TransportError{TransportError::Kind::failed, "the line is down"}};
    EXPECT_EQ(failureOfACall(), (NetworkFailure{-1, "request error the line is down"}));
    EXPECT_TRUE(log_->contains("请求失败: the line is down"));
}

TEST_F(ForeignTransportTest, ThatThrowsStillLeadsToACallback) {
    transport_->refuses = true;
    EXPECT_EQ(failureOfACall(), (NetworkFailure{-1, "callRequest error: no transport today"}));
    EXPECT_TRUE(log_->contains("callRequest error: no transport today"));
}

TEST_F(ForeignTransportTest, ThatThrowsAfterAllLeadsToOneEndOfAPart) {
    transport_->breaks = true;
    for (int round = 0; round < 50; ++round) {
        const auto ends = std::make_shared<std::atomic<int>>(0);
        try {
            HttpHelper::shared().putUploadFile("https://cloud.example/part", {}, "0", nullptr,
                                               [ends](const BaseResponse&) { ++*ends; });
        } catch (const std::runtime_error&) {
            ++*ends;
        }
        while (*ends == 0) std::this_thread::yield();
        test_support::Event drained;
        platform().delegateQueue->post([&] { drained.set(); });
        ASSERT_TRUE(drained.wait());
        EXPECT_EQ(*ends, 1);
    }
}

TEST_F(ForeignTransportTest, IsAskedForSixtySecondsOfPatienceByRequestsAndParts) {
    start<ProbeRequest>(HTTPMethod::get, outcome_.callback());
    outcome_.wait();
    HttpHelper::shared().putUploadFile("https://cloud.example/part", {}, "0", nullptr,
                                       [](const BaseResponse&) {});
    EXPECT_THAT(transport_->idleTimeouts, ElementsAre(std::chrono::seconds(60), std::chrono::seconds(60)));
}

}  // namespace
}  // namespace baseapi
