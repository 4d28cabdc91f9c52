#include "baseapi/api/user/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

TEST(UserRecords, OfTheSignInAreTheirWireTexts) {
    expectFullText<AuthCodeBean>(R"({"authCode":"a"})");
    expectFullText<OrgUserInfo>(
        R"({"carrierUserId":"a","carrierUserName":"b","carrierUserGrade":"c","carrierUserStatus":"d",)"
        R"("carrierMobile":"e","carrierPayType":"f"})");
    expectFullText<UserAuthResp>(
        R"({"accessToken":"a","innerUserId":1,"data":{"carrierUserId":"x"},"code":2,"msg":"b",)"
        R"("httpCode":3})");
}

TEST(UserRecords, OfUsersAreTheirWireTexts) {
    expectFullText<UserInfo>(
        R"({"id":1,"name":"a","userId":"b","deptId":2,"deptName":"c","mobile":"d","role":3,)"
        R"("status":4})");
    expectFullText<GetUserByIdBean>(R"({"userId":"a"})");
    expectFullText<GetUsersByIdResponse>(R"({"data":{"id":7},"code":1,"msg":"a","httpCode":2})");
    expectFullText<GetUserListBean>(
        R"({"deptId":"a","isDirect":true,"offset":"b","limit":"c","keyWord":"d"})");
    expectFullText<GetuserListResponse>(R"({"list":[{"id":7}],"total":1,"code":2,"msg":"a","httpCode":3})");
    expectFullText<ModifiedUserInfo>(R"({"deptId":1,"role":2,"status":3})");
    expectFullText<ModifyUserReq>(R"({"userId":"a","userBaseInfo":{"deptId":7}})");
    expectFullText<DeleteUserByUserIdReq>(R"({"userId":"a"})");
}

TEST(UserRecords, OfSpaceAreTheirWireTexts) {
    expectFullText<GetSpaceBean>(R"({"type":"a","ownerId":"b","containerId":"c"})");
    expectFullText<SpaceInfo>(
        R"({"tenantId":"a","creator":"b","createTime":"c","modifier":"d","updateTime":"e",)"
        R"("ownerId":"f","type":1,"status":2,"capacity":3,"spaceUsed":4,"containerId":"g",)"
        R"("rootFileId":"h","bizRootFileId":"i","bizSboxFileId":"j"})");
    expectFullText<GetSpaceResp>(R"({"data":{"tenantId":"x"},"code":1,"msg":"a","httpCode":2})");
    expectFullText<GetCarrierSpaceReq>(R"({"ownerId":"a","type":1})");
    expectFullText<BatchGetSpaceReq>(R"({"batchGetSpaceReq":[{"ownerId":"x"}]})");
    expectFullText<CarrierSpaceInfo>(
        R"({"type":1,"status":2,"ownerId":3,"containerId":"a","bizRootFileId":"b",)"
        R"("bizSboxFileId":"c","capacity":4,"capacityKb":5,"spaceUsed":6,"tenantId":"d",)"
        R"("creator":"e","createTime":"f","modifier":"g","updateTime":"h","rootFileId":"i"})");
    expectFullText<GetSpaceInfoResponse>(R"({"msg":"a","code":1,"date":{"type":7}})");
    expectFullText<BatchGetSpaceInfoResponse>(
        R"({"batchGetSpaceResponse":[{"msg":"x"}],"code":1,"msg":"a","httpCode":2})");
}

TEST(UserRecords, TellTheSpaceInDifferentTypes) {
    EXPECT_EQ(decoded<SpaceInfo>(R"({"ownerId":"7","capacity":5368709120})").ownerId, "7");
    EXPECT_EQ(decoded<CarrierSpaceInfo>(R"({"ownerId":9007199254740993})").ownerId, 9007199254740993);
    expectFailure<SpaceInfo>(R"({"ownerId":7})", Kind::typeMismatch, "ownerId");
    expectFailure<CarrierSpaceInfo>(R"({"ownerId":"7"})", Kind::typeMismatch, "ownerId");
}

TEST(UserRecords, PageUsersByTexts) {
    expectFailure<GetUserListBean>(R"({"offset":0})", Kind::typeMismatch, "offset");
    expectFailure<GetUserListBean>(R"({"limit":10})", Kind::typeMismatch, "limit");
}

TEST(UserRecords, AnEntryOfABatchHasAResultOfItsOwn) {
    const auto entry = decoded<GetSpaceInfoResponse>(R"({"code":404,"data":{"type":1},"httpCode":200})");
    EXPECT_EQ(entry.code, 404);
    EXPECT_FALSE(entry.date) << "the key is not \"data\"";
    EXPECT_EQ(encode(entry), R"({"code":404})");
}

TEST(UserRecords, AWrongTypeAnywhereFailsTheAnswer) {
    expectFailure<UserAuthResp>(R"({"innerUserId":"7"})", Kind::typeMismatch, "innerUserId");
    expectFailure<UserAuthResp>(R"({"data":{"carrierMobile":139}})", Kind::typeMismatch,
                                "data.carrierMobile");
    expectFailure<GetSpaceResp>(R"({"data":{"spaceUsed":"12"}})", Kind::typeMismatch, "data.spaceUsed");
    expectFailure<GetUsersByIdResponse>(R"({"data":{"id":"7"}})", Kind::typeMismatch, "data.id");
    expectFailure<GetuserListResponse>(R"({"list":[{},{"deptId":"7"}]})", Kind::typeMismatch,
                                       "list[1].deptId");
    expectFailure<BatchGetSpaceInfoResponse>(R"({"batchGetSpaceResponse":[{"date":{"capacityKb":1.5}}]})",
                                             Kind::typeMismatch, "batchGetSpaceResponse[0].date.capacityKb");
    expectFailure<BatchGetSpaceInfoResponse>(R"({"batchGetSpaceResponse":[{"code":"0"}]})",
                                             Kind::typeMismatch, "batchGetSpaceResponse[0].code");
}

}  // namespace
}  // namespace baseapi
