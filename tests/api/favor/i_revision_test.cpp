#include "baseapi/api/favor/i_revision.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_revision {
namespace {

Sent post(std::string body) {
    return {"POST", "/quillbox/ose/v1/revision/updateRevision", std::move(body)};
}

const std::string keep = R"({"containerId":"c","fileId":"f1","revisionId":"r1","keepForever":true})";

const std::vector<OperationRow> rows = {
    {"updateRevision", "absent", absent, refused},
    {"updateRevision", "fresh", "{}", refused},
    {"updateRevision", "full", keep, post(keep)},
    {"updateRevision", "onlyFileId", R"({"fileId":"f1"})", post(R"({"fileId":"f1","keepForever":false})")},
    {"updateRevision", "emptyFileId", R"({"fileId":""})", post(R"({"fileId":"","keepForever":false})")},
    {"updateRevision", "withoutContainerId", R"({"fileId":"f1","revisionId":"r1"})",
     post(R"({"fileId":"f1","revisionId":"r1","keepForever":false})")},
    {"updateRevision", "withoutRevisionId", R"({"containerId":"c","fileId":"f1"})",
     post(R"({"containerId":"c","fileId":"f1","keepForever":false})")},
    {"updateRevision", "withoutFileId", R"({"containerId":"c","revisionId":"r1","keepForever":true})",
     refused},
};

class RevisionOperation : public OperationTest {};

TEST_P(RevisionOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getRevisionImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IRevision, RevisionOperation, testing::ValuesIn(rows), nameOf);

TEST(IRevision, NamesItsOperation) {
    EXPECT_THAT(operationNames<IRevision>(), testing::ElementsAre("updateRevision"));
}

TEST(IRevision, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getRevisionImpl(), &CloudInstance::shared().getRevisionImpl());
}

class RevisionAnswer : public ServiceTest {};

TEST_F(RevisionAnswer, KeepsTheServicesCodeAndMessage) {
    status_ = 404;
    answer_ = R"({"code":13000404,"msg":"no such revision"})";
    const auto outcome = callOperation(CloudInstance::shared().getRevisionImpl(), "updateRevision", keep);
    const auto failure = std::get<NetworkFailure>(outcome.result);
    EXPECT_EQ(failure.code, 13000404);
    EXPECT_EQ(failure.message, "no such revision");
}

}  // namespace
}  // namespace baseapi::i_revision
