#include "baseapi/api/share/i_share.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_share {
namespace {

const std::string share = "/quillbox/ose/v1/share";

Sent get(const std::string& target) {
    return {"GET", target, absent};
}
Sent post(const std::string& target, std::string body) {
    return {"POST", target, std::move(body)};
}
Sent put(const std::string& target, std::string body) {
    return {"PUT", target, std::move(body)};
}

const std::string newLink =
    R"({"scope":2,"deptIds":["d1"],"groupIds":["g1"],"userIds":["u1","u2"],"fileIds":["f1"],"containerId":"c",)"
    R"("permission":{"preview":true,"edit":false,"download":true},"extractCode":"ab12","expireTime":"t1",)"
    R"("comment":"Paintings é","validDays":7,"expiredType":"e"})";
const std::string change =
    R"({"shareId":"s1","deptIds":["d1"],"groupIds":["g1"],"userIds":["u1"],"permission":{"edit":true},)"
    R"("expireTime":"t1","extractCode":"ab12","comment":"c","validDays":7})";
const std::string visit =
    R"({"shortUrl":"x1","parentFolder":"p","pageSize":10,"pageCursor":"c","sortType":1,"sortDirection":2,)"
    R"("qbstoken":"q","refreshCount":true,"fileName":"n","imageProcess":"i"})";

const std::vector<OperationRow> rows = {
    {"getShares", "absent", absent, refused},
    {"getShares", "full",
     R"({"pageSize":20,"pageCursor":"c","sortType":1,"sortDirection":2,"displayName":"n","imageProcess":"i"})",
     get(share + "?pageSize=20&pageCursor=c&sortType=1&sortDirection=2&displayName=n&imageProcess=i")},
    {"getShares", "zeroAndAbsent", R"({"sortType":0,"sortDirection":0})", get(share)},
    {"getShares", "zeroAndEmpty",
     R"({"pageSize":0,"pageCursor":"","sortType":0,"sortDirection":0,"displayName":"","imageProcess":""})",
     get(share)},
    {"getShares", "onlyPageSize", R"({"pageSize":-1,"sortType":0,"sortDirection":0})",
     get(share + "?pageSize=-1")},
    {"getShares", "onlyPageCursor", R"({"pageCursor":"c","sortType":0,"sortDirection":0})",
     get(share + "?pageCursor=c")},
    {"getShares", "onlySortType", R"({"sortType":3,"sortDirection":0})", get(share + "?sortType=3")},
    {"getShares", "onlySortDirection", R"({"sortType":0,"sortDirection":1})",
     get(share + "?sortDirection=1")},
    {"getShares", "onlyDisplayName", R"({"sortType":0,"sortDirection":0,"displayName":"n"})",
     get(share + "?displayName=n")},
    {"getShares", "onlyImageProcess", R"({"sortType":0,"sortDirection":0,"imageProcess":"i"})",
     get(share + "?imageProcess=i")},
    {"getShares", "valuesAsTheyAre", R"({"sortType":0,"sortDirection":0,"displayName":"a%20b&c=d"})",
     get(share + "?displayName=a%20b&c=d")},

    {"createShare", "absent", absent, refused},
    {"createShare", "fresh", "{}", post(share, R"({"scope":0})")},
    {"createShare", "full", newLink, post(share, newLink)},

    {"cancelShare", "absent", absent, refused},
    {"cancelShare", "fresh", "{}", refused},
    {"cancelShare", "full", R"({"shareIds":["s1","s2"]})",
     post(share + "/cancel", R"({"shareIds":["s1","s2"]})")},
    {"cancelShare", "noIds", R"({"shareIds":[]})", post(share + "/cancel", R"({"shareIds":[]})")},

    {"getShareDetail", "absent", absent, refused},
    {"getShareDetail", "fresh", "{}", refused},
    {"getShareDetail", "full", R"({"shareId":"s1"})", get(share + "/s1")},
    {"getShareDetail", "emptyShareId", R"({"shareId":""})", get(share + "/")},
    {"getShareDetail", "shareIdAsItIs", R"({"shareId":"a/b%20?c"})", get(share + "/a/b%20?c")},

    {"modifyShareDetail", "absent", absent, refused},
    {"modifyShareDetail", "fresh", "{}", refused},
    {"modifyShareDetail", "full", change, put(share + "/s1", change)},
    {"modifyShareDetail", "withoutShareId", R"({"comment":"c"})", refused},
    {"modifyShareDetail", "emptyShareId", R"({"shareId":""})", put(share + "/", R"({"shareId":""})")},

    {"getShareFiles", "absent", absent, refused},
    {"getShareFiles", "fresh", "{}", post(share + "/files", R"({"pageSize":100})")},
    {"getShareFiles", "full", visit, post(share + "/files", visit)},
};

class ShareOperation : public OperationTest {};

TEST_P(ShareOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getShareImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IShare, ShareOperation, testing::ValuesIn(rows), nameOf);

TEST(IShare, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IShare>(),
                testing::ElementsAre("getShares", "createShare", "cancelShare", "getShareDetail",
                                     "modifyShareDetail", "getShareFiles"));
}

TEST(IShare, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getShareImpl(), &CloudInstance::shared().getShareImpl());
}

TEST(IShareDeathTest, AListOfLinksWithoutASortEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto& shares = CloudInstance::shared().getShareImpl();
    EXPECT_DEATH(shares.getShares(GetShareBean::empty(), nullptr), "sortType is absent");
    EXPECT_DEATH(shares.getShares(GetShareBean(20, "c", std::nullopt, 2, "n", "i"), nullptr),
                 "sortType is absent");
    EXPECT_DEATH(shares.getShares(GetShareBean(20, "c", 1, std::nullopt, "n", "i"), nullptr),
                 "sortDirection is absent");
}

class ShareAnswer : public ServiceTest {
  protected:
    IShare& shares_ = CloudInstance::shared().getShareImpl();
};

TEST_F(ShareAnswer, OfLinksTakenBackIsASuccessThoughOneWasNot) {
    answer_ = R"({"subResponseList":[{"shareId":"s1","code":0},{"shareId":"s2","code":404,"msg":"gone"}],)"
              R"("code":0})";
    EXPECT_EQ(
        std::get<std::string>(callOperation(shares_, "cancelShare", R"({"shareIds":["s1","s2"]})").result),
        answer_);
}

TEST_F(ShareAnswer, WithAnUnknownPermissionIsAFailureThatNamesThePlace) {
    answer_ = R"({"files":[],"link":{"permission":"OWNER"},"code":0})";
    const auto failure = std::get<NetworkFailure>(callOperation(shares_, "getShareFiles", visit).result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_EQ(failure.message,
              "str to bean error data corrupted at link.permission (none of READ, WRITE, ADMIN)");
}

TEST_F(ShareAnswer, KeepsTheServicesCodeAndMessage) {
    status_ = 403;
    answer_ = R"({"code":13000403,"msg":"the extract code is wrong"})";
    const auto failure = std::get<NetworkFailure>(callOperation(shares_, "getShareFiles", visit).result);
    EXPECT_EQ(failure.code, 13000403);
    EXPECT_EQ(failure.message, "the extract code is wrong");
}

}  // namespace
}  // namespace baseapi::i_share
