#include "cli/upload_cause.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace quillbox {
namespace {

class UploadCauseTest : public testing::Test {
  protected:
    void log(std::initializer_list<std::string_view> pieces) {
        causes_.read(std::span<const std::string_view>(pieces.begin(), pieces.size()));
    }

    UploadCause causes_;
};

TEST_F(UploadCauseTest, ARefusedCreateNamesCodeAndMessage) {
    log({"filesCreateRequest failure code = ", "507", ", msg = ", "quota exceeded"});
    EXPECT_EQ(causes_.cause(), "the service refused to create it: 507 quota exceeded");
}

TEST_F(UploadCauseTest, AnAnswerWithACodeIsARefusalToo) {
    log({"filesCreateRequest success resp = ", R"({"code":4001,"msg":"no"})"});
    log({"file create failed:", "no"});
    EXPECT_EQ(causes_.cause(), "the service refused to create it: 4001 no");
}

TEST_F(UploadCauseTest, ARefusedCompleteAndABrokenPartAreTold) {
    log({"filesCompleteRequest failure code = ", "-1", ", msg = ", "response status code = 503"});
    EXPECT_EQ(causes_.cause(), "the service refused to complete it: status 503");
    causes_.reset();
    log({"UploadTask", ": onFailure ret = ", "Connection reset by peer"});
    EXPECT_EQ(causes_.cause(), "a part could not be sent: Connection reset by peer");
}

TEST_F(UploadCauseTest, TheFirstCauseIsTheCause) {
    causes_.say("Permission denied");
    log({"filesCreateRequest get sha256 nil"});
    EXPECT_EQ(causes_.cause(), "Permission denied");
}

TEST_F(UploadCauseTest, OtherLinesTellNothing) {
    log({"Request url = ", "http://127.0.0.1/quillbox/ose/v1/files/create"});
    log({"files"});
    log({});
    log({"filesCreateRequest success resp = ", R"({"code":0})"});
    EXPECT_EQ(causes_.cause(), std::nullopt);
}

TEST_F(UploadCauseTest, AnotherUploadBeginsWithoutACause) {
    causes_.say("x");
    causes_.reset();
    EXPECT_EQ(causes_.cause(), std::nullopt);
}

TEST(FailureText, EachFailureOfTheLibraryHasWords) {
    EXPECT_EQ(failureText("to create it", -1, "request error Could not resolve host: x"),
              "the service did not answer the request to create it: Could not resolve host: x");
    EXPECT_EQ(failureText("to create it", -1, "str to bean error d"),
              "the service's answer to the request to create it cannot be understood: d");
    EXPECT_EQ(failureText("to create it", -1, "params build faild"),
              "the request to create it cannot be built (is each name valid UTF-8?)");
    EXPECT_EQ(failureText("the sign-in", -1, "request error x"),
              "the service did not answer the request for the sign-in: x");
    EXPECT_NE(failureText("to create it", -1, "callRequest error: invalidURL").find("no valid address"),
              std::string::npos);
}

}  // namespace
}  // namespace quillbox
