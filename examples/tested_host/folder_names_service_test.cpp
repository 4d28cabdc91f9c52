#include <gtest/gtest.h>

#include <future>

#include "baseapi/testkit/local_service.h"
#include "examples/tested_host/folder_names.h"

namespace {

using namespace baseapi;

/// Signs in at a service that runs for this test alone.
class FolderNamesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(service_.problem(), "");
        auto& cloud = CloudInstance::shared();
        cloud.host = service_.url();
        std::promise<std::string> token;
        cloud.getUserImpl().getToken(AuthCodeBean{.authCode = "anna"}, [&](const auto& result) {
            result.visit(
                [&](const NetworkResult<UserAuthResp>::success& it) {
                    token.set_value(it.record.accessToken.value_or(""));
                },
                [&](const NetworkFailure&) { token.set_value(""); });
        });
        cloud.token = token.get_future().get();
    }

    FolderNames::Listing list(const std::string& folder) {
        std::promise<FolderNames::Listing> listed;
        names_.list(folder, [&](const FolderNames::Listing& listing) { listed.set_value(listing); });
        return listed.get_future().get();
    }

    testkit::LocalService service_{{.program = QUILLBOXD}};
    FolderNames names_{CloudInstance::shared().getFileImpl()};
};

TEST_F(FolderNamesTest, OutlivesOneBrokenConnection) {
    ASSERT_TRUE(service_.plan(R"({"path":"/quillbox/ose/v1/files/*","kind":"reset","times":1})"));
    EXPECT_EQ(list("root").problem, "");
}

TEST_F(FolderNamesTest, GivesUpAfterTwo) {
    ASSERT_TRUE(service_.plan(R"({"path":"/quillbox/ose/v1/files/*","kind":"reset","times":2})"));
    EXPECT_EQ(list("root").problem, "The drive cannot be reached.");
}

}  // namespace
