#include "baseapi/backup/cloud_path_helper.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "tests/net/session.h"

namespace baseapi {

// Found by its argument, so outside the unnamed namespace.
static void PrintTo(const CreatePathResult::onResult& result, std::ostream* out) {
    *out << '"' << result.id << "\" " << result.code << " " << result.message;
}

namespace {

using test_support::Exchange;
using test_support::testWaitClock;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

using Result = CreatePathResult::onResult;

class CloudPathHelperTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        CloudInstance::shared().contentId = std::nullopt;
    }

    /// The service's answers, one for each request.
    void answerInTurn(std::vector<std::string> bodies) {
        answerWith(
            [bodies](Exchange& exchange) { exchange.answer(200, bodies.at(exchange.request.number - 1)); });
    }
    /// Runs the helper to its end.
    Result resultOf(const std::shared_ptr<CloudPathHelper>& helper) {
        test_support::Event arrived;
        Result found;
        helper->setOnCallback([&](const CreatePathResult& result) {
            result.visit([&](const Result& it) { found = it; });
            arrived.set();
        });
        helper->submit();
        EXPECT_TRUE(arrived.wait());
        EXPECT_TRUE(recordingLog().waitForBeginning("CloudPathHelper create path "));
        return found;
    }
    Result resultOf(std::optional<std::string> path) {
        return resultOf(std::make_shared<CloudPathHelper>(std::move(path), false, nullptr, ""));
    }
    std::vector<std::string> sentBodies() const {
        std::vector<std::string> bodies;
        for (const auto& request : server_.requests()) {
            EXPECT_EQ(request.verb + " " + request.target, "POST /quillbox/ose/v1/directory");
            bodies.push_back(request.body);
        }
        return bodies;
    }
    /// The helper's own lines.
    static std::vector<std::string> log() {
        std::vector<std::string> own;
        for (auto& line : recordingLog().lines())
            for (const auto* beginning :
                 {"CloudPathHelper ", "createDirectory", "Path is nil", "get cloudPath", "the callback"})
                if (line.starts_with(beginning)) own.push_back(std::move(line));
        return own;
    }
    static std::string folder(const std::string& name, const std::string& parent) {
        return R"({"fileName":")" + name + R"(","fileType":"10","parentFolder":[")" + parent +
               R"("],"renameMode":3,"hidden":false,"scene":""})";
    }
};

const char* const closing = "CloudPathHelper create path [0-9]+";

TEST_F(CloudPathHelperTest, AnAbsentPathIsTheRootWithoutACall) {
    EXPECT_EQ(resultOf(std::nullopt), (Result{"root", 0, "success"}));
    EXPECT_THAT(sentBodies(), IsEmpty());
    EXPECT_THAT(log(), ElementsAre("Path is nil, defaulting to root", MatchesRegex(closing)));
}

TEST_F(CloudPathHelperTest, APathWithoutANameIsTheRootWithoutACall) {
    for (const std::string path : {"", "/", "///", " ", "/ /\t/\n", "/\xE3\x80\x80/\xC2\xA0 "}) {
        recordingLog().clear();
        EXPECT_EQ(resultOf(path), (Result{"root", 0, "success"})) << path;
        EXPECT_THAT(log(), ElementsAre("CloudPathHelper submit path = " + path, MatchesRegex(closing)));
    }
    EXPECT_THAT(sentBodies(), IsEmpty());
}

TEST_F(CloudPathHelperTest, EachNameIsMadeInTheFolderOfTheOneBefore) {
    answerInTurn({R"({"id":"f1","code":0})", R"({"id":"f2","code":0})"});
    EXPECT_EQ(resultOf("/a//b/"), (Result{"f2", 0, "success"}));
    EXPECT_THAT(sentBodies(), ElementsAre(folder("a", ""), folder("b", "f1")));
    EXPECT_THAT(log(), ElementsAre("CloudPathHelper submit path = /a//b/",
                                   R"(createDirectoryRequest success resp = {"id":"f1","code":0})",
                                   R"(createDirectoryRequest success resp = {"id":"f2","code":0})",
                                   MatchesRegex(closing)));
}

TEST_F(CloudPathHelperTest, ANameKeepsItsBlanks) {
    answerInTurn({R"({"id":"f1"})", R"({"id":"f2"})"});
    resultOf("/ a/ /b \t");
    EXPECT_THAT(sentBodies(), ElementsAre(folder(" a", ""), folder("b \\t", "f1")));
}

TEST_F(CloudPathHelperTest, WhatItIsGivenGoesIntoEachFolder) {
    CloudInstance::shared().contentId = "c1";
    answerInTurn({R"({"id":"f1"})", R"({"id":"f2"})"});
    const auto helper = std::make_shared<CloudPathHelper>(std::nullopt, false, nullptr, std::nullopt);
    helper->path("a/b");
    helper->needHide(true);
    helper->scene("backup");
    EXPECT_EQ(resultOf(helper).id, "f2");
    const std::string rest = R"("],"containerId":"c1","renameMode":3,"hidden":true,"scene":"backup"})";
    EXPECT_THAT(sentBodies(), ElementsAre(R"({"fileName":"a","fileType":"10","parentFolder":[")" + rest,
                                          R"({"fileName":"b","fileType":"10","parentFolder":["f1)" + rest));
}

TEST_F(CloudPathHelperTest, AnAbsentSceneStaysAbsent) {
    answerInTurn({R"({"id":"f1"})"});
    resultOf(std::make_shared<CloudPathHelper>("a", false, nullptr, std::nullopt));
    EXPECT_THAT(
        sentBodies(),
        ElementsAre(R"({"fileName":"a","fileType":"10","parentFolder":[""],"renameMode":3,"hidden":false})"));
}

TEST_F(CloudPathHelperTest, AFolderThatIsThereIsUsed) {
    answerInTurn({R"({"id":"","existFileId":"f1","code":13000405,"msg":"it is there"})", R"({"id":"f2"})"});
    EXPECT_EQ(resultOf("/a/b"), (Result{"f2", 0, "success"}));
    EXPECT_THAT(sentBodies(), ElementsAre(folder("a", ""), folder("b", "f1")));
}

TEST_F(CloudPathHelperTest, AnIdCountsWhateverTheCodeIs) {
    answerInTurn({R"({"id":"f1","existFileId":"f9","code":13000405})"});
    EXPECT_EQ(resultOf("/a"), (Result{"f1", 0, "success"}));
}

TEST_F(CloudPathHelperTest, AFolderThatIsThereCountsWithItsCodeAlone) {
    answerInTurn({R"({"existFileId":"f1","code":13000404,"msg":"no"})"});
    EXPECT_EQ(resultOf("/a/b"), (Result{"", 13000404, "no"}));
    EXPECT_EQ(server_.requestCount(), 1U);
}

TEST_F(CloudPathHelperTest, AnAnswerWithoutAnIdEndsTheWalk) {
    struct Row {
        std::string answer;
        Result result;
    };
    for (const auto& [answer, result] : {
             Row{R"({"existFileId":"","code":13000405,"msg":"m"})", {"", 13000405, "m"}},
             Row{R"({"code":13000405,"msg":"m"})", {"", 13000405, "m"}},
             Row{R"({"code":0})", {"", 0, "msg is empty"}},
             Row{R"({"msg":"m"})", {"", -1, "m"}},
             Row{"{}", {"", -1, "msg is empty"}},
         }) {
        recordingLog().clear();
        answerWith(200, answer);
        const auto before = server_.requestCount();
        EXPECT_EQ(resultOf("/a/b"), result) << answer;
        EXPECT_EQ(server_.requestCount(), before + 1);
        EXPECT_THAT(log(), ElementsAre("CloudPathHelper submit path = /a/b", testing::_,
                                       "createDirectory failed, id is empty", MatchesRegex(closing)));
    }
}

TEST_F(CloudPathHelperTest, AFailureEndsTheWalkWithItsCodeAndMessage) {
    answerWith([](Exchange& exchange) {
        if (exchange.request.number == 1) return exchange.answer(200, R"({"id":"f1"})");
        exchange.answer(507, R"({"code":4001,"msg":"quota exceeded"})");
    });
    EXPECT_EQ(resultOf("/a/b/c"), (Result{"", 4001, "quota exceeded"}));
    const std::string last = "createDirectoryRequest failure code = 4001, msg = quota exceeded";
    ASSERT_TRUE(recordingLog().waitFor(last));
    EXPECT_EQ(server_.requestCount(), 2U);
    EXPECT_THAT(log(), ElementsAre("CloudPathHelper submit path = /a/b/c",
                                   R"(createDirectoryRequest success resp = {"id":"f1"})",
                                   MatchesRegex(closing), last));
}

TEST_F(CloudPathHelperTest, ANameThatIsNoTextIsRefused) {
    EXPECT_EQ(resultOf("/\xff"), (Result{"", -1, "params build faild"}));
    EXPECT_EQ(server_.requestCount(), 0U);
}

TEST_F(CloudPathHelperTest, WithoutACallbackItEndsAllTheSame) {
    answerInTurn({R"({"id":"f1"})"});
    std::make_shared<CloudPathHelper>("/a", false, nullptr, "")->submit();
    EXPECT_TRUE(recordingLog().waitForBeginning("CloudPathHelper create path "));
}

TEST_F(CloudPathHelperTest, LivesAsLongAsItsWork) {
    answerInTurn({R"({"id":"f1"})"});
    test_support::Event answered;
    test_support::Event gone;
    const auto atItsEnd = [&](void*) { gone.set(); };
    std::make_shared<CloudPathHelper>(
        "/a", false, [&, watch = std::shared_ptr<void>(nullptr, atItsEnd)](const auto&) { answered.set(); },
        "")
        ->submit();
    EXPECT_TRUE(answered.wait());
    EXPECT_TRUE(gone.wait());
}

// ---- waiting for a path

TEST_F(CloudPathHelperTest, APathIsWaitedForTenSeconds) {
    answerWith([](Exchange& exchange) {
        EXPECT_TRUE(testWaitClock().awaitWaiting());
        exchange.answer(200, R"({"id":"f1"})");
    });
    EXPECT_EQ(fetchCloudPath("/a"), (Result{"f1", 0, "success"}));
    EXPECT_EQ(testWaitClock().lastLimit(), std::chrono::seconds(10));
    EXPECT_THAT(sentBodies(), ElementsAre(folder("a", "")));
}

TEST_F(CloudPathHelperTest, AFailureOfAPathIsHandedOver) {
    answerWith(500, R"({"code":1,"msg":"m"})");
    EXPECT_EQ(fetchCloudPath("/a"), (Result{"", 1, "m"}));
}

TEST_F(CloudPathHelperTest, APathThatComesTooLateIsNotRead) {
    test_support::Event given;
    answerWith([&](Exchange& exchange) {
        if (exchange.waitFor(given)) exchange.answer(200, R"({"id":"f1"})");
    });
    std::thread time([] {
        ASSERT_TRUE(testWaitClock().awaitWaiting());
        testWaitClock().expire();
    });
    EXPECT_EQ(fetchCloudPath("/a"), (Result{"", -1, "timeout"}));
    time.join();
    EXPECT_THAT(log(), ElementsAre("CloudPathHelper submit path = /a", "get cloudPath overTime"));
    given.set();
    EXPECT_TRUE(recordingLog().waitForBeginning("CloudPathHelper create path "));
}

}  // namespace
}  // namespace baseapi
