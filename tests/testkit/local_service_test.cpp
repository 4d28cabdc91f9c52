#include "baseapi/testkit/local_service.h"

#include <gmock/gmock.h>

namespace {

using baseapi::testkit::LocalService;
using baseapi::testkit::post;
using ::testing::StartsWith;

constexpr auto program = BASEAPI_BIN_DIR "/quillboxd";

TEST(LocalService, AnswersAtItsAddressUntilItsEnd) {
    std::uint16_t port = 0;
    {
        const LocalService service({.program = program});
        ASSERT_EQ(service.problem(), "");
        port = service.port();
        EXPECT_EQ(service.url(), "http://127.0.0.1:" + std::to_string(port));
        EXPECT_EQ(post(port, "/_dev/reset", ""), 200);
    }
    EXPECT_EQ(post(port, "/_dev/reset", ""), 0);
}

TEST(LocalService, PlansFaultsAndForgetsThem) {
    const LocalService service({.program = program});
    constexpr auto signIn = "/quillbox/ose/v1/carrier/standard/user/auth";
    ASSERT_TRUE(service.plan(R"({"path":"*","kind":"status","status":418,"body":"tea","times":9})"));
    EXPECT_EQ(post(service.port(), signIn, R"({"authCode":"me"})"), 418);
    EXPECT_TRUE(service.reset());
    EXPECT_EQ(post(service.port(), signIn, R"({"authCode":"me"})"), 200);
    EXPECT_FALSE(service.plan(R"({"kind":"unheard of"})"));
}

TEST(LocalService, EndsInGoodOrderWhereItIsAskedTo) {
    LocalService service({.program = program});
    EXPECT_GT(service.pid(), 0);
    EXPECT_EQ(service.terminate(), 0);
    EXPECT_EQ(service.pid(), -1);
    EXPECT_FALSE(service.reset());
}

TEST(LocalService, SaysThatItDoesNotStart) {
    EXPECT_EQ(LocalService({.program = "/nonexistent/quillboxd"}).problem(),
              "/nonexistent/quillboxd does not start");
    const LocalService refused({.program = program, .arguments = {}, .errorFile = "/dev/null"});
    EXPECT_THAT(refused.problem(), StartsWith(program));
    EXPECT_EQ(refused.pid(), -1);
    EXPECT_EQ(refused.port(), 0);
}

}  // namespace
