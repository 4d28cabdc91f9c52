#include "baseapi/core/callback.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

#include "tests/support/test_platform.h"

namespace baseapi {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CallbackTest : public testing::Test {
  protected:
    CallbackTest() { test_support::recordingLog().clear(); }
};

TEST_F(CallbackTest, IsRunWithItsArguments) {
    int sum = 0;
    invokeCallback([&](int left, int right) { sum = left + right; }, 2, 3);
    EXPECT_EQ(sum, 5);
}

TEST_F(CallbackTest, MayBeAbsent) {
    invokeCallback(std::function<void(int)>(), 1);
    EXPECT_THAT(test_support::recordingLog().lines(), IsEmpty());
}

TEST_F(CallbackTest, ThatThrowsIsLoggedAndGoesNoFurther) {
    invokeCallback([] { throw std::runtime_error("broken"); });
    invokeCallback([] { throw 5; });
    EXPECT_THAT(test_support::recordingLog().lines(),
                ElementsAre("callback threw: broken", "callback threw: unknown exception"));
}

TEST_F(CallbackTest, ThatIsFinalRunsOnce) {
    int calls = 0;
    FinalCallback<std::string> callback([&](const std::string& text) { calls += text == "end" ? 1 : 100; });
    callback("end");
    callback("end");
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace baseapi
