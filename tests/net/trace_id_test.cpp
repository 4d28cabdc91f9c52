#include "baseapi/net/trace_id.h"

#include <gmock/gmock.h>

#include <set>
#include <thread>

namespace baseapi {
namespace {

TEST(TraceId, HasSixteenDigitsOfARandomUUIDBetweenFixedTexts) {
    const auto traceId = makeTraceId();
    EXPECT_EQ(traceId.size(), 38U);
    // The thirteenth digit of a random UUID is its version.
    EXPECT_THAT(traceId, testing::MatchesRegex("000000000000DSDK[0-9A-F]{12}4[0-9A-F]{3}000000"));
}

TEST(TraceId, IsNewEachTime) {
    std::set<std::string> all;
    for (int i = 0; i < 1000; ++i) all.insert(makeTraceId());
    EXPECT_EQ(all.size(), 1000U);
}

TEST(TraceId, IsNewOnEachThread) {
    std::set<std::string> all;
    for (int i = 0; i < 10; ++i) std::thread([&] { all.insert(makeTraceId()); }).join();
    EXPECT_EQ(all.size(), 10U);
}

}  // namespace
}  // namespace baseapi
