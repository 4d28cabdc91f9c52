#include "baseapi/transfer/upload_file_request.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/awaited.h"
#include "tests/support/scripted_server.h"

namespace baseapi {
namespace {

ByteBuffer bytesOf(std::string_view text) {
    ByteBuffer bytes{std::make_unique<char[]>(text.size()), text.size()};
    std::memcpy(bytes.data.get(), text.data(), text.size());
    return bytes;
}

UploadFileRequest requestTo(const std::string& url) {
    UploadFileRequest request;
    request.url = url;
    request.bytes = bytesOf("content");
    request.hash = "10";
    return request;
}

BaseResponse answerTo(UploadFileRequest request) {
    return test_support::awaited<BaseResponse>([&](auto onAnswer) { request.send(std::move(onAnswer)); });
}

TEST(UploadFileRequest, PutsItsBytes) {
    test_support::ScriptedServer server([](test_support::Exchange& exchange) { exchange.answer(200); });
    const auto response = answerTo(requestTo(server.url("/part?sign=1")));
    EXPECT_EQ(response, (BaseResponse{.code = 0, .msg = "success"}));
    ASSERT_EQ(server.requestCount(), 1U);
    EXPECT_EQ(server.requests()[0].verb, "PUT");
    EXPECT_EQ(server.requests()[0].target, "/part?sign=1");
    EXPECT_EQ(server.requests()[0].body, "content");
}

TEST(UploadFileRequest, RefusesAnotherVerb) {
    auto request = requestTo("http://127.0.0.1:1/");
    request.method = HTTPMethod::post;
    EXPECT_EQ(answerTo(std::move(request)), (BaseResponse{.code = -1, .msg = "method invalid"}));
}

TEST(UploadFileRequest, SaysThatAnAddressIsNone) {
    EXPECT_EQ(answerTo(requestTo("http://a b/")), (BaseResponse{.code = -1, .msg = "url invalid"}));
}

TEST(UploadFileRequestDeathTest, EndsTheProcessWithoutBytesOrHash) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    auto withoutBytes = requestTo("http://127.0.0.1:1/");
    withoutBytes.bytes = std::nullopt;
    EXPECT_DEATH(withoutBytes.send(nullptr), "bytes or hash is absent");
    auto withoutHash = requestTo("http://127.0.0.1:1/");
    withoutHash.hash = std::nullopt;
    EXPECT_DEATH(withoutHash.send(nullptr), "bytes or hash is absent");
}

}  // namespace
}  // namespace baseapi
