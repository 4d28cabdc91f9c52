#include "baseapi/api/job/i_job.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_job {
namespace {

const std::string prefix = "/quillbox/ose/v1/";

Sent get(const std::string& target) {
    return {"GET", prefix + target, absent};
}
Sent post(const std::string& target, std::string body) {
    return {"POST", prefix + target, std::move(body)};
}

const std::string newJob =
    R"({"taskType":3,"actionType":1,"taskInfo":{"fileInfo":[{"fileId":"f1","filePath":"/a/é.zip"},{}],)"
    R"("newFilePath":"/b","srcContainerId":"c1","uncompressFilePaths":["x/y","z"]},)"
    R"("dstContainerId":"c2","password":"p \"&"})";

const std::vector<OperationRow> rows = {
    {"cancelJobs", "absent", absent, refused},
    {"cancelJobs", "fresh", "{}", refused},
    {"cancelJobs", "full", R"({"jobId":"j1"})", post("cancel", R"({"jobId":"j1"})")},
    {"cancelJobs", "emptyJobId", R"({"jobId":""})", post("cancel", R"({"jobId":""})")},

    {"createJobs", "absent", absent, refused},
    {"createJobs", "fresh", "{}", post("jobs", R"({"taskType":0})")},
    {"createJobs", "full", newJob, post("jobs", newJob)},
    {"createJobs", "emptyTaskInfo", R"({"taskInfo":{}})", post("jobs", R"({"taskType":0,"taskInfo":{}})")},

    {"getJobDetailById", "absent", absent, refused},
    {"getJobDetailById", "fresh", "{}", refused},
    {"getJobDetailById", "full", R"({"jobId":"j1"})", get("j1")},
    {"getJobDetailById", "emptyJobId", R"({"jobId":""})", get("")},
    {"getJobDetailById", "jobIdAsItIs", R"({"jobId":"a/b%20?c"})", get("a/b%20?c")},

    {"getJobs", "absent", absent, refused},
    {"getJobs", "fresh", "{}", get("jobs?offset=0&limit=100")},
    {"getJobs", "full", R"({"type":2,"status":1,"offset":20,"limit":10})",
     get("jobs?offset=20&limit=10&type=2&status=1")},
    {"getJobs", "onlyType", R"({"type":2})", get("jobs?offset=0&limit=100&type=2")},
    {"getJobs", "onlyStatus", R"({"status":2})", get("jobs?offset=0&limit=100&status=2")},
    {"getJobs", "anyTypeAndStatus", R"({"type":-1,"status":-1})", get("jobs?offset=0&limit=100")},
    {"getJobs", "zeros", R"({"type":0,"status":0,"offset":0,"limit":0})",
     get("jobs?offset=0&limit=0&type=0&status=0")},
    {"getJobs", "negative", R"({"type":-2,"status":-2,"offset":-1,"limit":-1})",
     get("jobs?offset=-1&limit=-1&type=-2&status=-2")},
};

class JobOperation : public OperationTest {};

TEST_P(JobOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getJobImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IJob, JobOperation, testing::ValuesIn(rows), nameOf);

TEST(IJob, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IJob>(),
                testing::ElementsAre("cancelJobs", "createJobs", "getJobDetailById", "getJobs"));
}

TEST(IJob, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getJobImpl(), &CloudInstance::shared().getJobImpl());
}

class JobAnswer : public ServiceTest {
  protected:
    IJob& jobs_ = CloudInstance::shared().getJobImpl();
};

TEST_F(JobAnswer, OfANewJobIsAText) {
    answer_ = R"({"data":"j1","code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(jobs_, "createJobs", newJob).result), answer_);
}

TEST_F(JobAnswer, WithNumbersInPlaceOfTextsIsAFailureThatNamesThePlace) {
    answer_ = R"({"data":{"jobInfo":{"status":2},"taskInfos":[{"status":"2"},{"status":2}]},"code":0})";
    const auto failure =
        std::get<NetworkFailure>(callOperation(jobs_, "getJobDetailById", R"({"jobId":"j1"})").result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_EQ(failure.message,
              "str to bean error type mismatch: string at data.taskInfos[1].status (found the number 2)");
}

TEST_F(JobAnswer, KeepsTheServicesCodeAndMessage) {
    status_ = 409;
    answer_ = R"({"code":13000409,"msg":"the job has ended"})";
    const auto failure =
        std::get<NetworkFailure>(callOperation(jobs_, "cancelJobs", R"({"jobId":"j1"})").result);
    EXPECT_EQ(failure.code, 13000409);
    EXPECT_EQ(failure.message, "the job has ended");
}

}  // namespace
}  // namespace baseapi::i_job
