#include "baseapi/api/favor/i_favor.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_favor {
namespace {

const std::string star = "/quillbox/ose/v1/star";

Sent files(const std::string& query) {
    return {"GET", star + "/files" + query, absent};
}
OperationRow batch(std::string when, std::optional<std::string> record, std::optional<std::string> body) {
    OperationRow row{"getStarBatch", std::move(when), std::move(record), std::nullopt};
    if (body) row.sent = Sent{"POST", star + "/batch", std::move(body)};
    row.answer = R"({"status":0})";
    return row;
}

const std::string starring =
    R"({"starred":true,"subRequestList":[{"containerId":"c","fileId":"f1"},{"fileId":"f2"},{}]})";

const std::vector<OperationRow> rows = {
    {"getStarFiles", "absent", absent, refused},
    {"getStarFiles", "fresh", "{}", files("")},
    {"getStarFiles", "full",
     R"({"pageSize":20,"pageCursor":"c","sortType":1,"sortDirection":2,"fileType":"t","imageProcess":"i"})",
     files("?pageSize=20&pageCursor=c&sortType=1&sortDirection=2&imageProcess=i")},
    {"getStarFiles", "zeroAndEmpty",
     R"({"pageSize":0,"pageCursor":"","sortType":0,"sortDirection":0,"fileType":"","imageProcess":""})",
     files("")},
    {"getStarFiles", "onlyPageSize", R"({"pageSize":-1})", files("?pageSize=-1")},
    {"getStarFiles", "onlyPageCursor", R"({"pageCursor":"c"})", files("?pageCursor=c")},
    {"getStarFiles", "onlySortType", R"({"sortType":3})", files("?sortType=3")},
    {"getStarFiles", "onlySortDirection", R"({"sortDirection":1})", files("?sortDirection=1")},
    {"getStarFiles", "onlyFileType", R"({"fileType":"t"})", files("")},
    {"getStarFiles", "onlyImageProcess", R"({"imageProcess":"i"})", files("?imageProcess=i")},
    {"getStarFiles", "valuesAsTheyAre", R"({"pageCursor":"a%20b&c=d"})", files("?pageCursor=a%20b&c=d")},

    batch("absent", absent, refused),
    batch("fresh", "{}", R"({"starred":false,"subRequestList":[]})"),
    batch("full", starring, starring),
    batch("unstarring", R"({"subRequestList":[{"fileId":"f1"}]})",
          R"({"starred":false,"subRequestList":[{"fileId":"f1"}]})"),
};

class FavorOperation : public OperationTest {};

TEST_P(FavorOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getFavorImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IFavor, FavorOperation, testing::ValuesIn(rows), nameOf);

TEST(IFavor, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IFavor>(), testing::ElementsAre("getStarFiles", "getStarBatch"));
}

TEST(IFavor, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getFavorImpl(), &CloudInstance::shared().getFavorImpl());
}

class FavorAnswer : public ServiceTest {
  protected:
    IFavor& favourites_ = CloudInstance::shared().getFavorImpl();
};

TEST_F(FavorAnswer, OfABatchIsASuccessThoughAFileFailed) {
    answer_ = R"({"subResponseList":[{"fileId":"f1","code":"0"},)"
              R"({"fileId":"f2","code":"404","message":"no such file"}],"status":1,"code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(favourites_, "getStarBatch", starring).result), answer_);
}

TEST_F(FavorAnswer, WithAStatusThatIsNotKnownIsASuccess) {
    answer_ = R"({"status":7,"code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(favourites_, "getStarBatch", starring).result),
              R"({"status":-1,"code":0})");
}

TEST_F(FavorAnswer, WithoutAStatusIsAFailureThatNamesTheKey) {
    answer_ = R"({"subResponseList":[],"code":0})";
    const auto failure =
        std::get<NetworkFailure>(callOperation(favourites_, "getStarBatch", starring).result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_EQ(failure.message,
              "str to bean error key not found: status (GetStarBatchResponse cannot be without it)");
}

TEST_F(FavorAnswer, OfAnotherTypeIsAFailureThatNamesThePlace) {
    answer_ = R"({"starFileList":[{"size":"12"}]})";
    const auto failure = std::get<NetworkFailure>(callOperation(favourites_, "getStarFiles", "{}").result);
    EXPECT_EQ(failure.message,
              R"(str to bean error type mismatch: int64 at starFileList[0].size (found a string))");
}

TEST_F(FavorAnswer, KeepsTheServicesCodeAndMessage) {
    status_ = 403;
    answer_ = R"({"code":13000403,"msg":"too many stars"})";
    const auto failure =
        std::get<NetworkFailure>(callOperation(favourites_, "getStarBatch", starring).result);
    EXPECT_EQ(failure.code, 13000403);
    EXPECT_EQ(failure.message, "too many stars");
}

}  // namespace
}  // namespace baseapi::i_favor
