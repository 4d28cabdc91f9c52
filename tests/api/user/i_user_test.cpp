#include "baseapi/api/user/i_user.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"
#include "tests/support/test_platform.h"

namespace baseapi::i_user {
namespace {

const std::string prefix = "/quillbox/ose/v1/";

Sent get(const std::string& target) {
    return {"GET", prefix + target, absent};
}
Sent post(const std::string& target, std::string body) {
    return {"POST", prefix + target, std::move(body)};
}
Sent del(const std::string& target, std::optional<std::string> body) {
    return {"DELETE", prefix + target, std::move(body)};
}

const std::vector<OperationRow> rows = {
    {"getToken", "absent", absent, refused},
    {"getToken", "fresh", "{}", refused},
    {"getToken", "full", R"({"authCode":"a"})", post("carrier/standard/user/auth", R"({"authCode":"a"})")},
    {"getToken", "emptyAuthCode", R"({"authCode":""})",
     post("carrier/standard/user/auth", R"({"authCode":""})")},

    {"getSpace", "absent", absent, refused},
    {"getSpace", "fresh", "{}", get("space/?type=")},
    {"getSpace", "full", R"({"type":"1","ownerId":"o1","containerId":"c"})",
     get("space/o1?type=1&containerId=c")},
    {"getSpace", "withoutContainerId", R"({"type":"1","ownerId":"o1"})", get("space/o1?type=1")},
    {"getSpace", "emptyContainerId", R"({"ownerId":"o1","containerId":""})",
     get("space/o1?type=&containerId=")},
    {"getSpace", "valuesAsTheyAre", R"({"ownerId":"a/b","type":"a%20b&c=d"})",
     get("space/a/b?type=a%20b&c=d")},

    {"getUserById", "absent", absent, refused},
    {"getUserById", "fresh", "{}", refused},
    {"getUserById", "full", R"({"userId":"u1"})", get("users/u1")},
    {"getUserById", "emptyUserId", R"({"userId":""})", get("users/")},

    {"getUserList", "absent", absent, refused},
    {"getUserList", "full", R"({"deptId":"d","isDirect":false,"offset":"20","limit":"10","keyWord":"k"})",
     get("userList?deptId=d&isDirect=false&offset=20&limit=10&keyWord=k")},
    {"getUserList", "onlyIsDirect", R"({"isDirect":true})", get("userList?isDirect=true")},
    {"getUserList", "empty", R"({"deptId":"","isDirect":true,"offset":"","limit":"","keyWord":""})",
     get("userList?isDirect=true")},
    {"getUserList", "onlyDeptId", R"({"deptId":"d","isDirect":true})",
     get("userList?deptId=d&isDirect=true")},
    {"getUserList", "onlyOffset", R"({"isDirect":true,"offset":"0"})",
     get("userList?isDirect=true&offset=0")},
    {"getUserList", "onlyLimit", R"({"isDirect":true,"limit":"0"})", get("userList?isDirect=true&limit=0")},
    {"getUserList", "onlyKeyWord", R"({"isDirect":true,"keyWord":"a%20b&c=d"})",
     get("userList?isDirect=true&keyWord=a%20b&c=d")},

    {"updateUser", "absent", absent, refused},
    {"updateUser", "fresh", "{}", refused},
    {"updateUser", "full",
     R"({"userId":"u1","userBaseInfo":{"deptId":9007199254740993,"role":1,"status":2}})",
     del("users/u1", R"({"deptId":9007199254740993,"role":1,"status":2})")},
    {"updateUser", "emptyUserBaseInfo", R"({"userId":"u1","userBaseInfo":{}})", del("users/u1", "{}")},
    {"updateUser", "withoutUserId", R"({"userBaseInfo":{"role":1}})", refused},
    {"updateUser", "withoutUserBaseInfo", R"({"userId":"u1"})", refused},
    {"updateUser", "emptyUserId", R"({"userId":"","userBaseInfo":{}})", del("users/", "{}")},

    {"deleteUser", "absent", absent, refused},
    {"deleteUser", "fresh", "{}", refused},
    {"deleteUser", "full", R"({"userId":"u1"})", del("users/u1", absent)},
    {"deleteUser", "emptyUserId", R"({"userId":""})", del("users/", absent)},
};

class UserOperation : public OperationTest {};

TEST_P(UserOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getUserImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IUser, UserOperation, testing::ValuesIn(rows), nameOf);

TEST(IUser, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IUser>(), testing::ElementsAre("getToken", "getSpace", "getUserById",
                                                              "getUserList", "updateUser", "deleteUser"));
}

TEST(IUser, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getUserImpl(), &CloudInstance::shared().getUserImpl());
}

TEST(IUserDeathTest, AListOfUsersThatDoesNotSayWhoseEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto& users = CloudInstance::shared().getUserImpl();
    EXPECT_DEATH(users.getUserList(GetUserListBean{}, nullptr), "isDirect is absent");
    EXPECT_DEATH(users.getUserList(GetUserListBean{.deptId = "d", .limit = "10"}, nullptr),
                 "isDirect is absent");
}

class UserAnswer : public ServiceTest {
  protected:
    IUser& users_ = CloudInstance::shared().getUserImpl();
};

TEST_F(UserAnswer, WithATokenLeavesTheSessionsTokenAlone) {
    answer_ = R"({"accessToken":"t","innerUserId":7,"data":{"carrierUserName":"n"},"code":0})";
    CloudInstance::shared().token = std::nullopt;
    EXPECT_EQ(std::get<std::string>(callOperation(users_, "getToken", R"({"authCode":"a"})").result),
              answer_);
    EXPECT_EQ(CloudInstance::shared().token.get(), std::nullopt);
}

TEST_F(UserAnswer, OfAListOfUsersIsAskedForWithALogLine) {
    test_support::recordingLog().clear();
    callOperation(users_, "getUserList", R"({"deptId":"d","isDirect":true,"limit":"10"})");
    EXPECT_THAT(test_support::recordingLog().lines(),
                testing::Contains("getParamsStr = deptId=d&isDirect=true&limit=10"));
}

TEST_F(UserAnswer, NeverComesForAnAbsentRecordNorDoesALogLineOfParts) {
    test_support::recordingLog().clear();
    callOperation(users_, "getUserList", absent);
    EXPECT_THAT(test_support::recordingLog().lines(),
                testing::Not(testing::Contains(testing::StartsWith("getParamsStr"))));
}

TEST_F(UserAnswer, OfAnotherTypeIsAFailureThatNamesThePlace) {
    answer_ = R"({"data":{"ownerId":7}})";
    const auto failure = std::get<NetworkFailure>(callOperation(users_, "getSpace", "{}").result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_EQ(failure.message,
              "str to bean error type mismatch: string at data.ownerId (found the number 7)");
}

}  // namespace
}  // namespace baseapi::i_user
