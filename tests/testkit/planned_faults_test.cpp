#include <gmock/gmock.h>

#include <future>

#include "baseapi/baseapi.h"
#include "baseapi/testkit/local_service.h"

namespace {

using namespace baseapi;
using ::testing::StartsWith;

constexpr auto serviceProgram = BASEAPI_BIN_DIR "/quillboxd";

/// What a host is told when the sign-in meets the fault.
std::string messageFor(const std::string& fault) {
    const testkit::LocalService service({.program = serviceProgram});
    EXPECT_TRUE(service.plan(R"({"path":"*",)" + fault + "}"));
    CloudInstance::shared().host = service.url();
    std::promise<std::string> told;
    CloudInstance::shared().getUserImpl().getToken(
        AuthCodeBean{.authCode = "me"}, [&](const NetworkResult<UserAuthResp>& result) {
            result.visit([&](const NetworkResult<UserAuthResp>::success&) { told.set_value("success"); },
                         [&](const NetworkFailure& it) { told.set_value(it.message); });
        });
    return told.get_future().get();
}

TEST(PlannedFaults, BecomeTheFailuresThatTheDocumentsName) {
    EXPECT_EQ(messageFor(R"("kind":"status","status":500,"body":{"code":7,"msg":"broken"})"), "broken");
    EXPECT_THAT(messageFor(R"("kind":"status","status":500,"body":"no record")"),
                StartsWith("response status code = "));
    EXPECT_THAT(messageFor(R"("kind":"reset")"), StartsWith("request error "));
    EXPECT_THAT(messageFor(R"("kind":"truncate","bytes":5)"), StartsWith("request error "));
    EXPECT_THAT(messageFor(R"("kind":"garbage")"), StartsWith("request error "));
    EXPECT_THAT(messageFor(R"("kind":"html")"), StartsWith("str to bean error "));
    EXPECT_THAT(messageFor(R"("kind":"empty")"), StartsWith("str to bean error "));
    EXPECT_EQ(messageFor(R"("kind":"trickle","bytesPerSecond":4000)"), "success");
}

}  // namespace
