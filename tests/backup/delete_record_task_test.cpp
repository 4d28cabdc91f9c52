#include "baseapi/backup/delete_record_task.h"

#include <gmock/gmock.h>

#include <set>

#include "tests/net/session.h"

namespace baseapi {
namespace {

using test_support::Exchange;
using test_support::ReceivedRequest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

constexpr const char* success = "success 0 success";
constexpr const char* released = "DeleteRecordTask release self [0-9]+";

std::string inWords(const DeleteRecordResult& result) {
    return result.visit(
        [](const DeleteRecordResult::onSuccess& it) {
            return "success " + std::to_string(it.code) + " " + it.msg;
        },
        [](const DeleteRecordResult::onFailure& it) {
            return "failure " + std::to_string(it.errCode) + " " + it.errMsg;
        });
}

std::string record(const std::string& id, int status, const std::string& time) {
    return R"({"status":)" + std::to_string(status) + R"(,"version":1,"createTime":")" + time +
           R"(","recordId":")" + id + R"("})";
}
std::string undated(const std::string& id, int status) {
    return R"({"status":)" + std::to_string(status) + R"(,"version":1,"recordId":")" + id + R"("})";
}

class DeleteRecordTaskTest : public SessionTest {
  protected:
    /// A service with these records that answers a deletion by the record's id.
    void serve(
        const std::string& records,
        std::function<void(Exchange&, std::string id)> onDelete = [](Exchange& exchange, const std::string&) {
            exchange.answer(200, R"({"code":0})");
        }) {
        answerWith([answer = R"({"data":[)" + records + "]}", onDelete](Exchange& exchange) {
            if (exchange.request.verb == "GET") return exchange.answer(200, answer);
            onDelete(exchange, idOf(exchange.request));
        });
    }
    std::string run(std::optional<std::string> lockId = "l1") {
        test_support::Event arrived;
        std::string words;
        std::atomic<int> count{0};
        std::make_shared<DeleteRecordTask>(std::move(lockId), 7, "100",
                                           [&](const DeleteRecordResult& result) {
                                               words = inWords(result);
                                               ++count;
                                               arrived.set();
                                           })
            ->submit();
        EXPECT_TRUE(arrived.wait());
        EXPECT_TRUE(recordingLog().waitForBeginning("DeleteRecordTask release self "));
        EXPECT_EQ(count, 1);
        return words;
    }
    static std::string idOf(const ReceivedRequest& request) {
        return request.target.substr(request.target.rfind('/') + 1);
    }
    /// The records whose deletion was asked for.
    std::multiset<std::string> deleted() const {
        std::multiset<std::string> ids;
        for (const auto& request : server_.requests())
            if (request.verb == "DELETE") ids.insert(idOf(request));
        return ids;
    }
    /// The task's own lines.
    static std::vector<std::string> log() {
        std::vector<std::string> own;
        for (auto& line : recordingLog().lines())
            for (const auto* beginning : {"getRecords ", "####", "backupDelete ", "DeleteRecordTask "})
                if (line.starts_with(beginning)) own.push_back(std::move(line));
        return own;
    }
};

const std::string counted = "###############################backupDelete totalCount code = ";
const std::string answered = "###############################backupDelete call one";
const std::string refused = "###############################backupDelete call error2";
const std::string failed = "###############################backupDelete call error3";

TEST_F(DeleteRecordTaskTest, AsksForOnePageOfTheModulesRecords) {
    serve("");
    EXPECT_EQ(run(), success);
    ASSERT_EQ(server_.requestCount(), 1U);
    EXPECT_EQ(server_.requests().front().target,
              "/quillbox/cloudfileh5/v1/backup/record?deviceId=7&moduleCode=100&pageSize=100");
}

TEST_F(DeleteRecordTaskTest, WithoutRecordsNothingIsDeleted) {
    serve("");
    EXPECT_EQ(run(), success);
    EXPECT_THAT(deleted(), IsEmpty());
    EXPECT_THAT(log(), ElementsAre(R"(getRecords success resp = {"data":[]})", MatchesRegex(released)));
}

TEST_F(DeleteRecordTaskTest, AFinishedRecordAloneIsKept) {
    serve(record("r1", 1, "2024"));
    EXPECT_EQ(run(), success);
    EXPECT_THAT(deleted(), IsEmpty());
}

TEST_F(DeleteRecordTaskTest, AnUnfinishedRecordIsDeleted) {
    serve(record("r1", 0, "2024"));
    EXPECT_EQ(run(), success);
    EXPECT_THAT(deleted(), UnorderedElementsAre("r1"));
    const auto request = server_.requests().at(1);
    EXPECT_EQ(request.target, "/quillbox/ose/v1/backup/record/r1");
    EXPECT_EQ(request.body, R"({"recordId":"r1"})");
    EXPECT_EQ(request.header("x-backup-lock-id"), "l1");
    EXPECT_THAT(log(), ElementsAre("getRecords success resp = {\"data\":[" + record("r1", 0, "2024") + "]}",
                                   counted + "1", answered, MatchesRegex(released)));
}

TEST_F(DeleteRecordTaskTest, OfFinishedRecordsTheNewestIsKept) {
    serve(record("old", 1, "2023-12-31") + "," + record("new", 1, "2024-01-01") + "," +
          record("open", 2, "2024-01-02") + "," + record("oldest", 1, "2022"));
    EXPECT_EQ(run(), success);
    EXPECT_THAT(deleted(), UnorderedElementsAre("old", "open", "oldest"));
}

TEST_F(DeleteRecordTaskTest, TimesAreComparedAsTexts) {
    serve(record("r9", 1, "9") + "," + record("r10", 1, "10"));
    run();
    EXPECT_THAT(deleted(), UnorderedElementsAre("r10"));
}

TEST_F(DeleteRecordTaskTest, OfEqualTimesTheFirstIsKept) {
    serve(record("r1", 1, "2024") + "," + record("r2", 1, "2024"));
    run();
    EXPECT_THAT(deleted(), UnorderedElementsAre("r2"));
}

TEST_F(DeleteRecordTaskTest, ARecordWithoutATimeKeepsItsPlace) {
    serve(record("r1", 1, "2024") + "," + undated("r2", 1));
    run();
    EXPECT_THAT(deleted(), UnorderedElementsAre("r2"));
}

TEST_F(DeleteRecordTaskTest, ARecordWithoutATimeThatComesFirstIsKept) {
    serve(undated("r1", 1) + "," + record("r2", 1, "2024"));
    run();
    EXPECT_THAT(deleted(), UnorderedElementsAre("r2"));
}

TEST_F(DeleteRecordTaskTest, TheOthersAreSortedAroundARecordWithoutATime) {
    serve(record("r1", 1, "2023") + "," + undated("r2", 0) + "," + record("r3", 1, "2024"));
    run();
    EXPECT_THAT(deleted(), UnorderedElementsAre("r1", "r2"));
}

TEST_F(DeleteRecordTaskTest, ARecordWithoutAnIdIsPassedOver) {
    serve(R"({"status":0,"version":1})");
    EXPECT_EQ(run(), success);
    EXPECT_THAT(deleted(), IsEmpty());
}

TEST_F(DeleteRecordTaskTest, AFinishedRecordWithoutAnIdIsTheOneThatIsKept) {
    serve(R"({"status":1,"version":1,"createTime":"2024"},)" + record("r1", 1, "2023"));
    run();
    EXPECT_THAT(deleted(), UnorderedElementsAre("r1"));
}

TEST_F(DeleteRecordTaskTest, AllDeletionsAreUnderWayTogether) {
    test_support::Event all;
    serve(record("r1", 0, "1") + "," + record("r2", 0, "2") + "," + record("r3", 0, "3"),
          [&](Exchange& exchange, const std::string&) {
              if (exchange.request.number == 4) all.set();
              if (exchange.waitFor(all)) exchange.answer(200, R"({"code":0})");
          });
    EXPECT_EQ(run(), success);
    EXPECT_THAT(deleted(), UnorderedElementsAre("r1", "r2", "r3"));
}

TEST_F(DeleteRecordTaskTest, ADeletionThatFailsIsCounted) {
    serve(record("r1", 0, "1") + "," + record("r2", 0, "2") + "," + record("r3", 0, "3"),
          [](Exchange& exchange, const std::string& id) {
              if (id == "r2") return exchange.answer(500, R"({"code":1,"msg":"m"})");
              exchange.answer(200, R"({"code":0})");
          });
    EXPECT_EQ(run(), "failure -1 backupDelete part failure ,size = 1");
    EXPECT_THAT(log(), testing::IsSupersetOf({counted + "3", answered, answered, answered, failed,
                                              std::string("backupDelete failure code = 1, msg = m")}));
}

TEST_F(DeleteRecordTaskTest, ADeletionThatFailsIsTold) {
    serve(record("r1", 0, "1"),
          [](Exchange& exchange, const std::string&) { exchange.answer(500, R"({"code":1,"msg":"m"})"); });
    EXPECT_EQ(run(), "failure -1 backupDelete part failure ,size = 1");
    EXPECT_THAT(log(), ElementsAre(testing::_, counted + "1", answered,
                                   "backupDelete failure code = 1, msg = m", failed, MatchesRegex(released)));
}

TEST_F(DeleteRecordTaskTest, ADeletionWithoutACodeOrWithAnotherIsCounted) {
    serve(record("r1", 0, "1") + "," + record("r2", 0, "2"), [](Exchange& exchange, const std::string& id) {
        exchange.answer(200, id == "r1" ? "{}" : R"({"code":7})");
    });
    EXPECT_EQ(run(), "failure -1 backupDelete part failure ,size = 2");
    EXPECT_THAT(log(), ElementsAre(testing::_, counted + "2", answered, refused, answered, refused,
                                   MatchesRegex(released)));
}

TEST_F(DeleteRecordTaskTest, AFailureOfTheListIsHandedOver) {
    answerWith(500, R"({"code":4001,"msg":"no"})");
    EXPECT_EQ(run(), "failure 4001 no");
    const std::string last = "getRecords failure code = 4001, msg = no";
    ASSERT_TRUE(recordingLog().waitFor(last));
    EXPECT_THAT(log(), ElementsAre(MatchesRegex(released), last));
}

TEST_F(DeleteRecordTaskTest, AnAnswerWithoutAListIsAFailure) {
    answerWith(200, R"({"code":0})");
    EXPECT_EQ(run(), "failure -1 response.data is null");
    EXPECT_THAT(log(), ElementsAre(R"(getRecords success resp = {"code":0})", MatchesRegex(released)));
}

TEST_F(DeleteRecordTaskTest, AbsentValuesAskForTheirDefaults) {
    serve("");
    std::make_shared<DeleteRecordTask>(std::nullopt, std::nullopt, std::nullopt, nullptr)->submit();
    ASSERT_TRUE(recordingLog().waitForBeginning("DeleteRecordTask release self "));
    EXPECT_EQ(server_.requests().front().target,
              "/quillbox/cloudfileh5/v1/backup/record?deviceId=0&moduleCode=&pageSize=100");
}

TEST_F(DeleteRecordTaskTest, WithoutALockIdItEndsWhereNothingIsToBeDeleted) {
    serve(record("r1", 1, "2024"));
    EXPECT_EQ(run(std::nullopt), success);
}

using DeleteRecordTaskDeathTest = DeleteRecordTaskTest;

TEST_F(DeleteRecordTaskDeathTest, WithoutALockIdADeletionEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    serve(record("r1", 0, "2024"));
    EXPECT_DEATH(run(std::nullopt), "the lock id is absent");
}

}  // namespace
}  // namespace baseapi
