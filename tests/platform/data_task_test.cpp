#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;
using Kind = TransportError::Kind;

TEST(DataTask, SendsVerbTargetHeadersAndBodyAsGiven) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(201, "made"); });
    const auto answer =
        fetch(*makeTransport(), {.url = server.url("/a/../b%20c?d=1&e"),
                                 .verb = "POST",
                                 .headers = {{"Content-Type", "application/json"}, {"x-a", "1"}},
                                 .body = R"({"k":1})"});
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.status, 201);
    EXPECT_EQ(answer.body, "made");
    const auto request = server.requests().at(0);
    EXPECT_EQ(request.verb, "POST");
    EXPECT_EQ(request.target, "/a/../b%20c?d=1&e");
    EXPECT_EQ(request.header("Content-Type"), "application/json");
    EXPECT_EQ(request.header("x-a"), "1");
    EXPECT_EQ(request.header("Content-Length"), "7");
    EXPECT_EQ(request.body, R"({"k":1})");
}

}  // namespace
}  // namespace baseapi
