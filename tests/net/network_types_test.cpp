#include <gtest/gtest.h>

#include "baseapi/net/http_method.h"
#include "baseapi/net/network_error.h"
#include "baseapi/net/network_monitor.h"
#include "baseapi/net/network_result.h"
#include "baseapi/net/progress_listener.h"

namespace baseapi {
namespace {

TEST(HTTPMethod, HasTheVerbsOfTheWire) {
    EXPECT_EQ(text(HTTPMethod::get), "GET");
    EXPECT_EQ(text(HTTPMethod::post), "POST");
    EXPECT_EQ(text(HTTPMethod::put), "PUT");
    EXPECT_EQ(text(HTTPMethod::delete_), "DELETE");
    EXPECT_EQ(text(HTTPMethod::patch), "PATCH");
}

TEST(NetworkError, IsNamedByItsCase) {
    EXPECT_STREQ(NetworkError(NetworkError::statusCode{404}).what(), "statusCode");
    EXPECT_STREQ(NetworkError(NetworkError::decodingError{"x"}).what(), "decodingError");
    EXPECT_STREQ(NetworkError(NetworkError::unknown{"x"}).what(), "unknown");
    EXPECT_STREQ(NetworkError(NetworkError::invalidURL{}).what(), "invalidURL");
    EXPECT_STREQ(NetworkError(NetworkError::invalidResponse{}).what(), "invalidResponse");
}

TEST(NetworkResult, IsTakenApartByVisiting) {
    const auto describe = [](const NetworkResult<int>& result) {
        return result.visit([](const NetworkResult<int>::success& it) { return std::to_string(it.record); },
                            [](const NetworkResult<int>::failure& it) { return it.message; });
    };
    EXPECT_EQ(describe({NetworkResult<int>::success{7}}), "7");
    EXPECT_EQ(describe({NetworkResult<int>::failure{-1, "no"}}), "no");
}

TEST(ProgressHandler, CallsItsClosureWhetherOrNotTheTargetStillExists) {
    int calls = 0;
    auto target = std::make_shared<int>();
    ProgressHandler handler(target,
                            [&](const std::string& hash, std::int64_t bytesWritten, std::int64_t totalBytes) {
                                EXPECT_EQ(hash, "10");
                                EXPECT_EQ(bytesWritten, 3);
                                EXPECT_EQ(totalBytes, 5);
                                ++calls;
                            });
    handler.onProgress("10", 3, 5);
    target.reset();
    EXPECT_TRUE(handler.callback.expired());
    handler.onProgress("10", 3, 5);
    EXPECT_EQ(calls, 2);
}

TEST(NetworkMonitor, HasNothingBehindIt) {
    const NetworkMonitor monitor;
    EXPECT_EQ(monitor.monitor, nullptr);
    EXPECT_EQ(monitor.queue, nullptr);
}

}  // namespace
}  // namespace baseapi
