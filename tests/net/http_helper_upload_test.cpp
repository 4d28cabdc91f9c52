#include <gmock/gmock.h>

#include <cstring>
#include <future>
#include <set>

#include "baseapi/net/http_helper.h"
#include "tests/net/session.h"
#include "tests/support/awaited.h"

namespace baseapi {
namespace {

using test_support::Event;
using test_support::Exchange;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

ByteBuffer bytes(std::string_view text) {
    ByteBuffer buffer{std::make_unique<char[]>(text.size()), text.size()};
    std::memcpy(buffer.data.get(), text.data(), text.size());
    return buffer;
}

struct Report {
    std::string hash;
    std::int64_t bytesWritten;
    std::int64_t totalBytes;
};

class RecordingListener : public ProgressListener {
  public:
    void onProgress(const std::string& hash, std::int64_t bytesWritten, std::int64_t totalBytes) override {
        std::lock_guard lock(mutex_);
        reports_.push_back({hash, bytesWritten, totalBytes});
    }
    std::vector<Report> reports() const {
        std::lock_guard lock(mutex_);
        return reports_;
    }

  private:
    mutable std::mutex mutex_;
    std::vector<Report> reports_;
};

class PutUploadFileTest : public SessionTest {
  protected:
    BaseResponse put(std::string_view content, std::shared_ptr<ProgressListener> listener = nullptr) {
        return putTo(server_.url("/part?sig=1"), content, std::move(listener));
    }
    static BaseResponse putTo(const std::string& url, std::string_view content,
                              std::shared_ptr<ProgressListener> listener = nullptr) {
        return test_support::awaited<BaseResponse>([&](auto continuation) {
            HttpHelper::shared().putUploadFile(url, bytes(content), "10", std::move(listener),
                                               std::move(continuation));
        });
    }
    void expectSuccess(const BaseResponse& response) {
        EXPECT_EQ(response.code, 0);
        EXPECT_EQ(response.msg, "success");
        EXPECT_EQ(response.httpCode, std::nullopt);
    }
    void expectFailure(const BaseResponse& response) {
        EXPECT_EQ(response.code, -1);
        EXPECT_NE(response.msg.value_or(""), "");
        EXPECT_EQ(response.httpCode, std::nullopt);
    }
};

TEST_F(PutUploadFileTest, SendsTheBytesToTheAddress) {
    expectSuccess(put("content"));
    ASSERT_EQ(server_.requestCount(), 1U);
    const auto request = server_.requests().front();
    EXPECT_EQ(request.verb, "PUT");
    EXPECT_EQ(request.target, "/part?sig=1");
    EXPECT_EQ(request.body, "content");
}

TEST_F(PutUploadFileTest, SendsTwoHeadersBesideThoseOfTheTransport) {
    CloudInstance::shared().token = "token-1";
    put("content");
    const auto request = server_.requests().at(0);
    std::set<std::string> names;
    for (const auto& [name, value] : request.headers) names.insert(name);
    for (const auto* own : {"Host", "Accept-Encoding"}) names.erase(own);
    EXPECT_THAT(names, ElementsAre("Content-Length", "Content-Type"));
    EXPECT_EQ(request.header("Content-Type"), "application/octet-stream");
    EXPECT_EQ(request.header("Content-Length"), "7");
    EXPECT_EQ(request.headerCount("Content-Length"), 1U);
}

TEST_F(PutUploadFileTest, SendsAnEmptyPartWithLengthZero) {
    expectSuccess(put(""));
    EXPECT_EQ(server_.requests().front().header("Content-Length"), "0");
    EXPECT_EQ(server_.requests().front().headerCount("Content-Length"), 1U);
}

TEST_F(PutUploadFileTest, TakesEveryStatusForSuccess) {
    for (const int status : {200, 204, 403, 404, 500, 503}) {
        answerWith([=](Exchange& exchange) {
            status == 204 ? exchange.send("HTTP/1.1 204 No Content\r\n\r\n")
                          : exchange.answer(status, R"({"code":1})");
        });
        expectSuccess(put("content"));
    }
}

TEST_F(PutUploadFileTest, ReportsATransportError) {
    answerWith([](Exchange& exchange) { exchange.reset(); });
    expectFailure(put("content"));
    EXPECT_EQ(server_.requestCount(), 1U);
}

TEST_F(PutUploadFileTest, ReportsAnAnswerThatBreaksOff) {
    for (const auto* part :
         {"HTTP/1.1 200 OK\r\nContent-Le", "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\n{}"}) {
        answerWith([=](Exchange& exchange) {
            exchange.send(part);
            exchange.close();
        });
        expectFailure(put("content"));
    }
}

TEST_F(PutUploadFileTest, ReportsThatNobodyListens) {
    std::string gone;
    {
        test_support::ScriptedServer closed([](Exchange&) {});
        gone = closed.url("/part");
    }
    expectFailure(putTo(gone, "content"));
}

TEST_F(PutUploadFileTest, ReturnsAtOnceForWhatIsNoURL) {
    for (const std::string& url : {server_.url("/a b"), server_.url("/a\r\nX: 1"), server_.url("/%zz"),
                                   server_.url("/\xc3\xa9"), std::string("http://[")}) {
        recordingLog().clear();
        const auto response = putTo(url, "content");
        EXPECT_EQ(response.code, -1);
        EXPECT_EQ(response.msg, "url invalid");
        EXPECT_EQ(response.httpCode, std::nullopt);
        EXPECT_THAT(recordingLog().lines(), ElementsAre("putUploadFile bytes size = 7",
                                                        "putUploadFile hash = 10", "无效的URL: " + url));
    }
    EXPECT_EQ(server_.connectionCount(), 0U);
}

TEST_F(PutUploadFileTest, ReportsRunningTotalsUnderTheHash) {
    constexpr std::int64_t size = 8 << 20;
    const auto listener = std::make_shared<RecordingListener>();
    expectSuccess(put(std::string(size, 'x'), listener));
    const auto reports = listener->reports();
    ASSERT_FALSE(reports.empty());
    std::int64_t before = 0;
    for (const auto& report : reports) {
        EXPECT_EQ(report.hash, "10");
        EXPECT_EQ(report.totalBytes, size);
        EXPECT_GE(report.bytesWritten, before);
        before = report.bytesWritten;
    }
    EXPECT_EQ(before, size);
    EXPECT_EQ(server_.requests().front().body.size(), static_cast<std::size_t>(size));
}

/// The lines of one PUT, with "ID" for the task's number.
std::vector<std::string> putLines() {
    auto lines = recordingLog().lines();
    const std::string begin = "==============XXXXXX====start===========";
    std::string identifier;
    for (const auto& line : lines) {
        if (line.starts_with(begin))
            identifier = line.substr(begin.size(), line.find("=", begin.size()) - begin.size());
    }
    for (auto& line : lines) {
        for (const auto* before : {"start===========", "设置任务成功: ", "didCompleteWithError==========="}) {
            const auto place = line.find(before + identifier);
            if (place != std::string::npos)
                line.replace(place + std::strlen(before), identifier.size(), "ID");
        }
    }
    return lines;
}

TEST_F(PutUploadFileTest, LogsItsStepsInTheirOrder) {
    put("content");
    EXPECT_THAT(putLines(),
                ElementsAre("putUploadFile bytes size = 7", "putUploadFile hash = 10",
                            "==============XXXXXX====start===========ID===============",
                            "设置任务成功: ID, 当前任务数: 1",
                            "========== 10=========totalBytesSent = 7 , totalBytesExpectedToSend = 7",
                            StartsWith("==============XXXXXX====didCompleteWithError===========ID")));
}

TEST_F(PutUploadFileTest, CountsThePartsThatAreUnderWay) {
    Event release;
    answerWith([&](Exchange& exchange) {
        exchange.waitFor(release);
        exchange.answer(200);
    });
    auto first = std::async(std::launch::async, [&] { return put("1"); });
    ASSERT_TRUE(server_.waitForRequests(1));
    auto second = std::async(std::launch::async, [&] { return put("2"); });
    ASSERT_TRUE(server_.waitForRequests(2));
    EXPECT_THAT(recordingLog().lines(), Contains(HasSubstr("当前任务数: 1")));
    EXPECT_THAT(recordingLog().lines(), Contains(HasSubstr("当前任务数: 2")));
    release.set();
    expectSuccess(first.get());
    expectSuccess(second.get());

    recordingLog().clear();
    put("3");
    EXPECT_THAT(recordingLog().lines(), Contains(HasSubstr("当前任务数: 1")));
}

TEST_F(PutUploadFileTest, IsNotCountedWithRestCalls) {
    probe()->callRequest();
    outcome_.record();
    EXPECT_THAT(recordingLog().lines(), Not(Contains(HasSubstr("当前任务数"))));
    recordingLog().clear();
    put("1");
    EXPECT_THAT(recordingLog().lines(), Contains(HasSubstr("当前任务数: 1")));
}

TEST_F(PutUploadFileTest, SendsManyPartsAtOnce) {
    std::vector<std::future<BaseResponse>> parts;
    for (int i = 0; i < 16; ++i)
        parts.push_back(std::async(std::launch::async, [&] { return put("content"); }));
    for (auto& part : parts) expectSuccess(part.get());
    EXPECT_EQ(server_.requestCount(), 16U);
}

}  // namespace
}  // namespace baseapi
