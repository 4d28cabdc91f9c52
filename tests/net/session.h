#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/net/base_req.h"
#include "tests/support/scripted_server.h"
#include "tests/support/test_platform.h"

namespace baseapi {

using test_support::recordingLog;

/// A request whose parts the test sets.
class ProbeRequest : public BaseReq<BaseResponse> {
  public:
    using BaseReq::BaseReq;
    int buildParams() override {
        if (!path) return refused;
        setAddress(*path, query);
        body = content;
        if (!extraHeaders.empty()) heads = extraHeaders;
        return built;
    }

    std::optional<std::string> path = "/probe";
    std::string query;
    std::optional<std::string> content;
    Headers extraHeaders;
};

/// Collects what a callback gets.
class Outcome {
  public:
    NetworkCallback<BaseResponse> callback() {
        return [this](NetworkResult<BaseResponse> result) {
            thread_ = std::this_thread::get_id();
            {
                std::lock_guard lock(mutex_);
                results_.push_back(std::move(result));
            }
            arrived_.set();
        };
    }

    /// Waits for the result. Whatever it is, it must have come once.
    NetworkResult<BaseResponse> wait() {
        EXPECT_TRUE(arrived_.wait());
        std::lock_guard lock(mutex_);
        EXPECT_EQ(results_.size(), 1U);
        return results_.empty() ? NetworkResult<BaseResponse>{NetworkFailure{0, "no result"}}
                                : results_.front();
    }
    BaseResponse record() {
        const auto result = wait();
        if (const auto* success = std::get_if<NetworkResult<BaseResponse>::success>(&result.value))
            return success->record;
        ADD_FAILURE() << "failure: " << std::get<NetworkFailure>(result.value).message;
        return {};
    }
    NetworkFailure failure() {
        const auto result = wait();
        if (const auto* failure = std::get_if<NetworkFailure>(&result.value)) return *failure;
        ADD_FAILURE() << "success";
        return {};
    }
    std::size_t count() const {
        std::lock_guard lock(mutex_);
        return results_.size();
    }
    std::thread::id thread() const { return thread_; }

  private:
    mutable std::mutex mutex_;
    std::vector<NetworkResult<BaseResponse>> results_;
    std::atomic<std::thread::id> thread_;
    test_support::Event arrived_;
};

inline bool operator==(const NetworkFailure& left, const NetworkFailure& right) {
    return left.code == right.code && left.message == right.message;
}
inline void PrintTo(const NetworkFailure& failure, std::ostream* out) {
    *out << failure.code << " " << failure.message;
}

/// A service that answers as the test says, and the session values to reach it. Each test starts without a
/// token and with an empty log.
class SessionTest : public testing::Test {
  protected:
    void SetUp() override {
        recordingLog().clear();
        CloudInstance::shared().host = server_.url();
        CloudInstance::shared().token = std::nullopt;
    }
    void TearDown() override { EXPECT_TRUE(test_support::transfersEnd()); }

    /// What the service answers from now on.
    void answerWith(test_support::ScriptedServer::Handler handler) {
        std::lock_guard lock(mutex_);
        handler_ = std::move(handler);
    }
    void answerWith(int status, std::string body) {
        answerWith([=](test_support::Exchange& exchange) { exchange.answer(status, body); });
    }

    std::shared_ptr<ProbeRequest> probe(HTTPMethod method = HTTPMethod::post) {
        return std::make_shared<ProbeRequest>(method, outcome_.callback());
    }
    /// Sends a probe and waits for its end.
    test_support::ReceivedRequest send(const std::shared_ptr<ProbeRequest>& request) {
        request->callRequest();
        outcome_.wait();
        const auto requests = server_.requests();
        EXPECT_EQ(requests.size(), 1U);
        return requests.empty() ? test_support::ReceivedRequest{} : requests.front();
    }

  private:
    std::mutex mutex_;
    test_support::ScriptedServer::Handler handler_ = [](test_support::Exchange& exchange) {
        exchange.answer(200, "{}");
    };

  protected:
    Outcome outcome_;
    test_support::ScriptedServer server_{[this](test_support::Exchange& exchange) {
        test_support::ScriptedServer::Handler handler;
        {
            std::lock_guard lock(mutex_);
            handler = handler_;
        }
        handler(exchange);
    }};
};

}  // namespace baseapi
