#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/cli/quillbox_process.h"
#include "tests/cli/script.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"

namespace quillbox_test {
namespace {

using test_support::Exchange;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class CallCommandTest : public testing::Test {
  protected:
    Outcome call(std::vector<std::string> arguments, RunSettings settings = {}) {
        arguments.insert(arguments.begin(), {"call", "--json"});
        settings.environment.insert({{"QUILLBOX_HOST", server_.url()}, {"QUILLBOX_TOKEN", "secret-token"}});
        return run(std::move(arguments), std::move(settings));
    }
    std::string sentBody() const { return server_.requests().at(0).body; }
    void answer(int status, std::string body) {
        handler_ = [status, body](Exchange& exchange) { exchange.answer(status, body); };
    }

    test_support::TemporaryFolder folder_;
    Script handler_{[](Exchange& exchange) { exchange.answer(200, R"({"code":0})"); }};
    test_support::ScriptedServer server_{[this](Exchange& exchange) { handler_(exchange); }};
};

TEST_F(CallCommandTest, TheListNamesInterfaceOperationAndRecords) {
    const auto list = call({"--list"});
    EXPECT_EQ(list.status, 0);
    EXPECT_THAT(
        list.lines,
        Contains(
            R"({"interface":"IFile","operation":"filesList","request":"FilesListBean","response":"FilesListResponse"})"));
    EXPECT_THAT(
        list.lines,
        Contains(
            R"({"interface":"IUser","operation":"getToken","request":"AuthCodeBean","response":"UserAuthResp"})"));
    EXPECT_THAT(
        list.lines,
        Contains(
            R"({"interface":"IBackUp","operation":"getDevices","request":null,"response":"DevicesResponse"})"));
    EXPECT_EQ(server_.requestCount(), 0U);
    const auto text = run({"call", "--list"});
    EXPECT_THAT(text.output, HasSubstr("IFile.filesList(FilesListBean) -> FilesListResponse\n"));
}

TEST_F(CallCommandTest, ASuccessIsTheRecordByItsOwnRules) {
    answer(200,
           R"({"unknown":1,"nextCursor":"c","files":[{"id":"1","fileName":"a\"b"}],"code":0,"msg":null})");
    const auto result = call({"filesList", R"({"type":"x"})"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(
        result.lines,
        ElementsAre(
            R"({"event":"success","record":{"files":[{"id":"1","fileName":"a\"b"}],"nextCursor":"c","code":0}})"));
    EXPECT_EQ(server_.requests().at(0).target, "/quillbox/ose/v1/files/x");
}

TEST_F(CallCommandTest, AnAnswerWithACodeIsASuccess) {
    answer(200, R"({"code":4001,"msg":"no"})");
    const auto result = call({"fileComplete", "{}"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.lines, ElementsAre(R"({"event":"success","record":{"code":4001,"msg":"no"}})"));
}

TEST_F(CallCommandTest, AFailureHasCodeAndMessage) {
    answer(500, R"({"code":4001,"msg":"no"})");
    const auto result = call({"fileComplete", "{}"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(R"({"event":"failure","code":4001,"message":"no"})"));
}

TEST_F(CallCommandTest, WithoutARecordItIsAbsent) {
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"filesCreate"}, {"filesCreate", "null"}, {"filesCreate", " null\n"}}) {
        const auto result = call(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.lines,
                    ElementsAre(R"({"event":"failure","code":-1,"message":"params build faild"})"));
    }
    EXPECT_EQ(server_.requestCount(), 0U);
}

TEST_F(CallCommandTest, AnEmptyRecordHasItsDefaults) {
    EXPECT_EQ(call({"filesCreate", "{}"}).status, 0);
    EXPECT_EQ(sentBody(), R"({"length":0,"uploadType":1,"autoRename":2,"hidden":false,"scene":""})");
}

TEST_F(CallCommandTest, GivenKeysAreLaidOverTheDefaultsInInnerRecordsToo) {
    EXPECT_EQ(
        call({"filesList", R"({"type":"t","pageInfo":{"pageCursor":"c"},"unknown":{"x":[1]},"hidden":true})"})
            .status,
        0);
    EXPECT_EQ(sentBody(), R"({"type":"t","pageInfo":{"pageSize":0,"pageCursor":"c"},"hidden":true})");
}

TEST_F(CallCommandTest, ARecordComesFromAFileOrFromStandardInput) {
    std::ofstream(folder_ / "record") << R"({"fileId":"of the file"})";
    EXPECT_EQ(call({"fileComplete", "@" + (folder_ / "record").string()}).status, 0);
    RunSettings settings;
    settings.standardInput = R"({"fileId":"of the input"})";
    EXPECT_EQ(call({"fileComplete", "-"}, settings).status, 0);
    EXPECT_EQ(server_.requests()[0].body, R"({"fileId":"of the file"})");
    EXPECT_EQ(server_.requests()[1].body, R"({"fileId":"of the input"})");
}

TEST_F(CallCommandTest, ARecordThatCannotBeReadCannotBeUsed) {
    for (const std::string record :
         {"{", "[]", "5", "\"x\"", "", R"({"fileId":5})", R"({"fileId":{}})", "@/missing", "@/tmp"}) {
        const auto result = call({"fileComplete", record});
        EXPECT_EQ(result.status, 2) << record;
        EXPECT_THAT(result.lines, IsEmpty());
        EXPECT_THAT(result.error, StartsWith("quillbox: "));
    }
    EXPECT_THAT(call({"fileComplete", R"({"fileId":5})"}).error, HasSubstr("\"fileId\" must be of type"));
    EXPECT_EQ(server_.requestCount(), 0U);
}

TEST_F(CallCommandTest, AnOperationThatTakesNoLockIdOrDeviceIdRefusesThem) {
    EXPECT_EQ(call({"fileComplete", "{}", "--lock-id", ""}).status, 2);
    EXPECT_EQ(call({"fileComplete", "{}", "--device-id", "1"}).status, 2);
}

TEST_F(CallCommandTest, ALockIdGoesIntoTheHeader) {
    EXPECT_EQ(call({"createRecord", R"({"moduleCode":"102"})", "--lock-id", "l1"}).status, 0);
    EXPECT_EQ(server_.requests().at(0).header("x-backup-lock-id"), "l1");
    EXPECT_EQ(call({"deleteBackupLock", "--lock-id", ""}).status, 0);
    EXPECT_EQ(server_.requests().at(1).header("x-backup-lock-id"), "");
}

TEST_F(CallCommandTest, ALockIdThatIsNotGivenIsAbsent) {
    EXPECT_EQ(call({"backupDelete", R"({"recordId":"r1"})"}).status, 0);
    EXPECT_EQ(server_.requests().at(0).header("x-backup-lock-id"), std::nullopt);
    const auto refused = call({"keepBackupLock"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.lines,
                ElementsAre(R"({"event":"failure","code":-1,"message":"params build faild"})"));
}

TEST_F(CallCommandTest, ADeviceIdGoesIntoThePath) {
    EXPECT_EQ(call({"unbindDevice", "--device-id", "7"}).status, 0);
    EXPECT_EQ(server_.requests().at(0).target, "/quillbox/ose/v1/backup/device/7");
    EXPECT_EQ(call({"unbindDevice"}).status, 2);
}

TEST_F(CallCommandTest, AnOperationThatNeverAnswersEndsWithItsWait) {
    EXPECT_EQ(call({"updateConfigInfo", R"({"deviceId":"7"})", "--wait", "0.1"}).status, 3);
    EXPECT_EQ(server_.requestCount(), 0U);
}

TEST_F(CallCommandTest, AFatalStopOfTheLibraryEndsTheProcess) {
    const auto result = call({"getConfigInfo", "{}"});
    EXPECT_THAT(result.error, HasSubstr("moduleCode is absent"));
    EXPECT_NE(result.status, 0);
}

TEST_F(CallCommandTest, NoAnswerInTimeHasAStatusOfItsOwn) {
    handler_ = [](Exchange& exchange) { exchange.hold(); };
    const auto result = call({"getAccessFiles", "--wait", "0.2"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.lines, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("no answer"));
}

TEST_F(CallCommandTest, TheTokenIsNotPrintedWhereTheServiceRepeatsIt) {
    answer(401, R"({"code":401,"msg":"unknown token secret-token"})");
    EXPECT_THAT(call({"getAccessFiles"}).lines,
                ElementsAre(R"({"event":"failure","code":401,"message":"unknown token ***"})"));
    answer(200, R"({"code":0,"msg":"hello secret-token","nextCursor":"secret-token"})");
    EXPECT_THAT(
        call({"filesList", R"({"type":"x"})"}).lines,
        ElementsAre(R"({"event":"success","record":{"nextCursor":"***","code":0,"msg":"hello ***"}})"));
}

TEST_F(CallCommandTest, TheTextForPeopleIsTheRecordOverSeveralLines) {
    answer(200, R"({"code":0,"nextCursor":"c"})");
    const auto result = run({"call", "filesList", R"({"type":"x"})", "--host", server_.url()});
    EXPECT_EQ(result.output, "{\n  \"nextCursor\": \"c\",\n  \"code\": 0\n}\n");
}

TEST_F(CallCommandTest, AtCtrlCTheAnswerIsStillWaitedFor) {
    test_support::Event arrived;
    test_support::Event released;
    handler_ = [&](Exchange& exchange) {
        arrived.set();
        if (exchange.waitFor(released)) exchange.answer(200, R"({"code":0})");
    };
    QuillboxProcess process({"call", "getAccessFiles", "--json", "--host", server_.url()});
    ASSERT_TRUE(arrived.wait());
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for the answer to getAccessFiles"));
    released.set();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_THAT(process.lines(), ElementsAre(R"({"event":"success","record":{"code":0}})"));
}

TEST_F(CallCommandTest, TheSecondCtrlCEndsTheProcess) {
    test_support::Event arrived;
    handler_ = [&](Exchange& exchange) {
        arrived.set();
        exchange.hold();
    };
    QuillboxProcess process({"call", "getAccessFiles", "--json", "--host", server_.url()});
    ASSERT_TRUE(arrived.wait());
    process.interrupt();
    ASSERT_TRUE(process.waitForError("interrupted"));
    process.interrupt();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_THAT(process.lines(), IsEmpty());
}

}  // namespace
}  // namespace quillbox_test
