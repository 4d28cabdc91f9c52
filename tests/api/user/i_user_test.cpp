#include "baseapi/api/user/i_user.h"

#include "tests/api/operation_table.h"

namespace baseapi {
namespace {

const std::vector<OperationRow> rows = {
    {"getToken", "absent", absent, refused},
    {"getToken", "fresh", "{}", refused},
    {"getToken", "full", R"({"authCode":"a"})",
     Sent{"POST", "/quillbox/ose/v1/carrier/standard/user/auth", R"({"authCode":"a"})"}},
    {"getToken", "emptyAuthCode", R"({"authCode":""})",
     Sent{"POST", "/quillbox/ose/v1/carrier/standard/user/auth", R"({"authCode":""})"}},
};

class UserOperation : public OperationTest {};

TEST_P(UserOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getUserImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IUser, UserOperation, testing::ValuesIn(rows), nameOf);

class UserAnswer : public ServiceTest {};

TEST_F(UserAnswer, WithATokenLeavesTheSessionsTokenAlone) {
    answer_ = R"({"accessToken":"t","innerUserId":7,"data":{"carrierUserName":"n"},"code":0})";
    CloudInstance::shared().token = std::nullopt;
    EXPECT_EQ(
        std::get<std::string>(
            callOperation(CloudInstance::shared().getUserImpl(), "getToken", R"({"authCode":"a"})").result),
        answer_);
    EXPECT_EQ(CloudInstance::shared().token.get(), std::nullopt);
}

TEST(IUser, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getUserImpl(), &CloudInstance::shared().getUserImpl());
}

}  // namespace
}  // namespace baseapi
