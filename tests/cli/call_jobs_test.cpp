// The operations of the jobs.

#include <chrono>

#include "tests/cli/call_rows.h"

namespace quillbox_test::call_jobs {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::vector<Row> jobRows = {
    {"createJobs", "absent", absent, refused},
    {"createJobs", "fresh", "{}", failure(13000400, R"(\"taskType\" must be 1 (copy))"), "", post("jobs")},
    {"createJobs", "full",
     R"({"taskType":1,"actionType":2,"taskInfo":{"fileInfo":[{"fileId":"FILE","filePath":"/known.txt"}],)"
     R"("newFilePath":"/known","srcContainerId":"CONTAINER","uncompressFilePaths":[]},)"
     R"("dstContainerId":"CONTAINER","password":""})",
     success + R"("data":"1","code":0,"msg":"success"}})", "", post("jobs")},
    {"createJobs", "unknownFile", R"({"taskType":3,"taskInfo":{"fileInfo":[{"fileId":"none"}]}})",
     failure(13000404, R"(there is no file or folder \"none\")"), "", post("jobs")},
    {"createJobs", "intoNoFolder",
     R"({"taskType":2,"taskInfo":{"fileInfo":[{"fileId":"FILE"}],"newFilePath":"/none"}})",
     failure(13000404, R"(there is no file or folder \"/none\")"), "", post("jobs")},

    {"getJobs", "absent", absent, refused},
    {"getJobs", "fresh", "{}", success + R"("data":[],"code":0)", "", get("jobs?offset=0&limit=100")},
    {"getJobs", "ofOneType", R"({"type":2})", success + R"("data":[],)", "",
     get("jobs?offset=0&limit=100&type=2")},
    {"getJobs", "full", R"({"type":4,"status":0,"offset":5,"limit":10})", success + R"("data":[],)", "",
     get("jobs?offset=5&limit=10&type=4&status=0")},
    {"getJobs", "withoutAnEntry", R"({"limit":0})", failure(13000400, R"(\"limit\")"), "",
     get("jobs?offset=0&limit=0")},

    {"getJobDetailById", "absent", absent, refused},
    {"getJobDetailById", "fresh", "{}", refused},
    {"getJobDetailById", "emptyId", R"({"jobId":""})", failure(13000404, "there is no endpoint"), "",
     get("")},
    {"getJobDetailById", "full", R"({"jobId":"999"})", failure(13000404, R"(there is no job \"999\")"), "",
     get("999")},

    {"cancelJobs", "absent", absent, refused},
    {"cancelJobs", "fresh", "{}", refused},
    {"cancelJobs", "emptyId", R"({"jobId":""})", failure(13000400, R"(\"jobId\" is missing or empty)"), "",
     post("cancel")},
    {"cancelJobs", "full", R"({"jobId":"999"})", failure(13000404, R"(there is no job \"999\")"), "",
     post("cancel")},
};

INSTANTIATE_TEST_SUITE_P(OfJobs, CallRow, testing::ValuesIn(jobRows), nameOf);

class CallJobsTest : public CallServiceTest {
  protected:
    static constexpr const char* copying =
        R"({"taskType":1,"taskInfo":{"fileInfo":[{"fileId":"FILE"}],"newFilePath":"/known"}})";

    std::string detail(const std::string& id) const {
        return call("getJobDetailById", R"({"jobId":")" + id + "\"}").output;
    }
    std::string awaitEnd(const std::string& id) const {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        auto answer = detail(id);
        while (valueOf(answer, "endTime").empty() && std::chrono::steady_clock::now() < deadline)
            answer = detail(id);
        return answer;
    }
    /// Lets the jobs make no more steps, or (with DELETE) go on.
    void hold(const std::string& verb = "POST") const {
        EXPECT_EQ(quillboxd_test::send(verb, service_.url() + "/_dev/jobs", {}, R"({"steps":0})").status,
                  200);
    }
};

TEST_F(CallJobsTest, EveryOperationHasItsRows) {
    EXPECT_EQ(operationsIn(jobRows), operationsOf({"IJob"}));
}

TEST_F(CallJobsTest, AJobIsMadeAndWatchedToItsEnd) {
    const auto id = valueOf(call("createJobs", copying).output, "data");
    const auto ended = awaitEnd(id);
    EXPECT_THAT(ended, HasSubstr(R"("jobInfo":{"taskId":")" + id + R"(","taskName":"copy",)"));
    EXPECT_THAT(ended, HasSubstr(R"("status":2,"taskResultCode":0,"resultCode":0,"progress":100,)"));
    EXPECT_THAT(ended,
                HasSubstr(filled(R"("taskInfos":[{"id":"1","fileId":"FILE","filePath":"/known.txt",)")));
    EXPECT_THAT(ended, HasSubstr(R"("newFilePath":"/known/known.txt")"));
    EXPECT_EQ(json({"download", "--file-id", valueOf(ended, "newFileId"), "--to", "back"}).status, 0);
    EXPECT_EQ(contentOf(home_ / "back"), "hello");
    EXPECT_THAT(call("getJobs", R"({"status":2})").output, HasSubstr(R"("taskId":")" + id + '"'));
}

TEST_F(CallJobsTest, AJobIsCancelledOnce) {
    hold();
    const auto id = valueOf(call("createJobs", copying).output, "data");
    const auto record = R"({"jobId":")" + id + "\"}";
    EXPECT_THAT(call("cancelJobs", record).lines,
                ElementsAre(success + R"("data":")" + id + R"(","code":0,"msg":"success"}})"));
    hold("DELETE");
    EXPECT_THAT(detail(id), HasSubstr(R"("status":4,)"));
    EXPECT_THAT(call("cancelJobs", record).lines, ElementsAre(StartsWith(failure(13000409, "the job"))));
}

}  // namespace
}  // namespace quillbox_test::call_jobs
