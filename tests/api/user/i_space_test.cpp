#include "baseapi/api/user/i_space.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_space {
namespace {

Sent post(std::string body) {
    return {"POST", "/quillbox/ose/v1/space/batchGetSpace", std::move(body)};
}

const std::string batch = R"({"batchGetSpaceReq":[{"ownerId":"o1","type":1},{"ownerId":"o2"}]})";

const std::vector<OperationRow> rows = {
    {"batchGetSpace", "absent", absent, Sent{"POST", "/", absent}},
    {"batchGetSpace", "fresh", "{}", post("{}")},
    {"batchGetSpace", "full", batch, post(batch)},
    {"batchGetSpace", "emptyList", R"({"batchGetSpaceReq":[]})", post(R"({"batchGetSpaceReq":[]})")},
};

class SpaceOperation : public OperationTest {};

TEST_P(SpaceOperation, Sends) {
    expectRow(CloudInstance::shared().getSpaceImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(ISpace, SpaceOperation, testing::ValuesIn(rows), nameOf);

TEST(ISpace, NamesItsOperation) {
    EXPECT_THAT(operationNames<ISpace>(), testing::ElementsAre("batchGetSpace"));
}

TEST(ISpace, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getSpaceImpl(), &CloudInstance::shared().getSpaceImpl());
}

class SpaceAnswer : public ServiceTest {};

TEST_F(SpaceAnswer, OfABatchIsASuccessThoughAnEntryFailed) {
    answer_ = R"({"batchGetSpaceResponse":[{"msg":"ok","code":0,"date":{"ownerId":9007199254740993}},)"
              R"({"msg":"no such owner","code":404}],"code":0})";
    const auto outcome = callOperation(CloudInstance::shared().getSpaceImpl(), "batchGetSpace", batch);
    EXPECT_EQ(std::get<std::string>(outcome.result), answer_);
}

TEST_F(SpaceAnswer, NeverComesForARecordThatHasNoJsonForm) {
    const BatchGetSpaceReq noText{{{GetCarrierSpaceReq{.ownerId = "\xff"}}}};
    const auto outcome = awaitAnswer<BatchGetSpaceInfoResponse>([&](auto callback) {
        CloudInstance::shared().getSpaceImpl().batchGetSpace(noText, std::move(callback));
    });
    EXPECT_EQ(std::get<NetworkFailure>(outcome.result).message, "params build faild");
    EXPECT_EQ(sent(), refused);
}

}  // namespace
}  // namespace baseapi::i_space
