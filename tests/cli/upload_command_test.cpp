#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "tests/cli/cloud_test.h"
#include "tests/cli/script.h"
#include "tests/support/scripted_server.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;
using test_support::Exchange;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

std::vector<std::string> finalEvents(const Outcome& result) {
    std::vector<std::string> events;
    for (const auto& line : result.lines)
        if (line.find("\"event\":\"onSuccess\"") != std::string::npos ||
            line.find("\"event\":\"onFailure\"") != std::string::npos)
            events.push_back(line);
    return events;
}

std::string success(const std::string& file, const std::string& message = "success") {
    return R"({"event":"onSuccess","file":")" + file + R"(","code":0,"message":")" + message + "\"}";
}
std::string failure(const std::string& file) {
    return R"({"event":"onFailure","file":")" + file + R"(","code":100016,"message":"file invaild"})";
}

/// Uploads to the built local service.
class UploadToCloudTest : public CloudTest {};

TEST_F(UploadToCloudTest, AFileGoesUpAndTellsItsEvents) {
    make("a.txt", "hello");
    const auto result = json({"upload", "a.txt"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(
        result.lines,
        Contains(R"({"event":"onItemFinish","file":"a.txt","subHash":"10","index":0,"isSuccess":true})"));
    EXPECT_THAT(result.lines, Contains(R"({"event":"onProgress","file":"a.txt","bytes":5,"total":0})"));
    EXPECT_EQ(result.lines.back(), success("a.txt"));
    EXPECT_EQ(json({"download", "--file-id", idOf("a.txt"), "--to", "back"}).status, 0);
    EXPECT_EQ(contentOf(home_ / "back"), "hello");
}

TEST_F(UploadToCloudTest, ASecondUploadMovesNothing) {
    make("a.txt", "hello");
    json({"upload", "a.txt"});
    const auto again = json({"upload", "a.txt"});
    ASSERT_THAT(finalEvents(again), SizeIs(1));
    EXPECT_THAT(finalEvents(again)[0],
                testing::AnyOf(success("a.txt", "exist success"), success("a.txt", "rapid success")));
    EXPECT_THAT(text({"upload", "a.txt"}).error, HasSubstr("0 files sent, 1 there already"));
}

TEST_F(UploadToCloudTest, AnEmptyFileGoesUp) {
    make("empty", "");
    EXPECT_THAT(finalEvents(json({"upload", "empty"})), ElementsAre(StartsWith(R"({"event":"onSuccess")")));
    EXPECT_EQ(json({"verify", "empty", "--parent", "root"}).status, 0);
}

TEST_F(UploadToCloudTest, AFolderIsMirroredWithAllThatItHolds) {
    make("tree/b", "b");
    make("tree/a/deep/x", "x");
    fs::create_directories(home_ / "tree/empty");
    const auto result = json({"upload", "tree"});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(finalEvents(result), ElementsAre(success("tree/a/deep/x"), success("tree/b")));
    const auto tree = idOf("tree");
    EXPECT_NE(idOf("empty", tree), "");
    EXPECT_NE(idOf("x", idOf("deep", idOf("a", tree))), "");
    EXPECT_EQ(json({"verify", "tree", "--parent", "root"}).status, 0);
}

TEST_F(UploadToCloudTest, AnExistingFolderIsUsedAgain) {
    make("tree/a", "a");
    json({"upload", "tree"});
    make("tree/b", "b");
    EXPECT_EQ(json({"upload", "tree"}).status, 0);
    const auto root = json({"ls"});
    EXPECT_THAT(root.lines, SizeIs(1));
    EXPECT_THAT(json({"ls", idOf("tree")}).lines, SizeIs(2));
}

TEST_F(UploadToCloudTest, TheParentTakesTheFiles) {
    make("a", "a");
    const auto made = text({"mkdir", "target"});
    const auto id = made.output.substr(0, made.output.find('\n'));
    EXPECT_EQ(json({"upload", "a", "--parent", id}).status, 0);
    EXPECT_NE(idOf("a", id), "");
}

TEST_F(UploadToCloudTest, FilesGoInTheOrderGiven) {
    for (const auto* name : {"3", "1", "2"}) make(name, name);
    EXPECT_THAT(finalEvents(json({"upload", "3", "1", "2"})),
                ElementsAre(success("3"), success("1"), success("2")));
}

TEST_F(UploadToCloudTest, NamesOfManyKindsGoUp) {
    const std::string longest(255, 'n');
    for (const std::string name :
         {"new\nline", "\"quotes\" and \\", "中文 😀.pdf", "[a,b]", "--json", " ", "#?%20"})
        make("odd/" + name, name);
    make("odd/" + longest, "long");
    const auto result = json({"upload", "odd", "[a,b]"});
    EXPECT_THAT(result.error, HasSubstr("[a,b]: No such file"));
    EXPECT_THAT(finalEvents(result), SizeIs(9));
    EXPECT_THAT(result.lines, Contains(success("odd/new\\u000aline")));
    EXPECT_EQ(json({"verify", "odd", "--parent", "root"}).status, 0);
    const auto again = text({"upload", "odd"});
    EXPECT_THAT(again.output, HasSubstr("odd/new\\nline"));
    EXPECT_EQ(std::count(again.output.begin(), again.output.end(), '\n'), 8);
}

TEST_F(UploadToCloudTest, ANameThatIsNoUtf8FailsAlone) {
    make("odd/\xff\xfe", "x");
    make("odd/ok", "x");
    const auto result = json({"upload", "odd"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(finalEvents(result), ElementsAre(success("odd/ok"), failure("odd/\uFFFD\uFFFD")));
    EXPECT_THAT(result.error, HasSubstr("UTF-8"));
}

TEST_F(UploadToCloudTest, WhatIsNoFileFailsAndIsCountedAndNothingIsWaitedFor) {
    make("odd/ok", "x");
    ASSERT_EQ(::mkfifo((home_ / "odd/fifo").c_str(), 0600), 0);
    fs::create_symlink("nowhere", home_ / "odd/dangling");
    fs::create_symlink("self", home_ / "odd/self");
    fs::create_symlink(".", home_ / "odd/round");
    const auto result = json({"upload", "odd", "missing", "/dev/null"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(finalEvents(result), ElementsAre(failure("odd/dangling"), failure("odd/fifo"),
                                                 success("odd/ok"), failure("odd/round"), failure("odd/self"),
                                                 failure("missing"), failure("/dev/null")));
    EXPECT_THAT(result.error, AllOf(HasSubstr("odd/fifo: no regular file\n"),
                                    HasSubstr("odd/dangling: No such file or directory\n"),
                                    HasSubstr("odd/round: it leads back to a folder above it\n")));
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 6) << result.error;
}

TEST_F(UploadToCloudTest, WhatMayNotBeReadFails) {
    make("odd/secret", "x");
    make("odd/locked/inside", "x");
    make("odd/ok", "x");
    fs::permissions(home_ / "odd/secret", fs::perms::none);
    fs::permissions(home_ / "odd/locked", fs::perms::none);
    auto settings = signedIn();
    settings.withoutRootRights = true;
    const auto result = quillbox_test::run({"upload", "odd", "--json"}, settings);
    fs::permissions(home_ / "odd/locked", fs::perms::owner_all);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(finalEvents(result),
                ElementsAre(failure("odd/locked"), success("odd/ok"), failure("odd/secret")));
    EXPECT_THAT(result.error, AllOf(HasSubstr("odd/locked: the folder cannot be read: Permission denied\n"),
                                    HasSubstr("odd/secret: Permission denied\n")));
}

TEST_F(UploadToCloudTest, AWrongTokenFailsWithItsCause) {
    make("a", "a");
    const auto result = json({"upload", "a", "--token", "wrong-token"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(finalEvents(result), ElementsAre(failure("a")));
    EXPECT_THAT(result.error, StartsWith("a: the service refused to create it: "));
    EXPECT_THAT(result.error + result.output, Not(HasSubstr("wrong-token")));
}

TEST_F(UploadToCloudTest, AServiceThatIsGoneFailsWithItsCause) {
    make("a", "a");
    service_.kill();
    const auto result = json({"upload", "a"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(finalEvents(result), ElementsAre(failure("a")));
    EXPECT_THAT(result.error, StartsWith("a: the service did not answer the request to create it: "));
}

TEST_F(UploadToCloudTest, ForPeopleThereIsALineForEachFileAndASummary) {
    make("tree/a", "hello");
    const auto result = text({"upload", "tree", "missing"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "ok    tree/a  5 B\n");
    EXPECT_THAT(result.error, HasSubstr("missing: No such file or directory\n"));
    EXPECT_THAT(result.error, HasSubstr("1 file sent (5 B in 0:00, "));
    EXPECT_THAT(result.error, HasSubstr(", 1 failed\n"));
    EXPECT_THAT(result.output + result.error, Not(HasSubstr("\x1b")));
}

TEST_F(UploadToCloudTest, EveryLineIsAWholeObject) {
    make("odd/large", std::string(20 << 20, 'x'));
    for (int number = 0; number < 20; ++number) make("odd/\"" + std::to_string(number) + "\n\\", "x");
    const auto result = json({"upload", "odd"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.ends_with("}\n"));
    for (const auto& line : result.lines) {
        quillboxd_test::json::error_code error;
        const auto object = quillboxd_test::json::parse(line, error);
        ASSERT_TRUE(!error && object.is_object() && object.get_object().contains("event")) << line;
    }
}

TEST_F(UploadToCloudTest, AReaderThatIsGoneDoesNotStopTheUpload) {
    make("tree/a", "a");
    make("tree/b", "b");
    auto settings = signedIn();
    settings.readerGone = true;
    const auto result = run({"upload", "tree", "--json"}, settings);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_EQ(json({"verify", "tree", "--parent", "root"}).status, 0);
}

TEST_F(UploadToCloudTest, StandardOutputThatCannotBeWrittenIsToldAtTheEnd) {
    make("a", "a");
    auto settings = signedIn();
    settings.standardOutput = "/dev/full";
    const auto result = run({"upload", "a", "--json"}, settings);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "quillbox: standard output cannot be written: No space left on device\n");
    EXPECT_EQ(json({"verify", "a", "--parent", "root"}).status, 0);
}

/// Uploads to a server that does what the test says.
class UploadTest : public testing::Test {
  protected:
    static bool isCreate(const Exchange& exchange) {
        return exchange.request.target.ends_with("/files/create");
    }
    static bool isComplete(const Exchange& exchange) {
        return exchange.request.target.ends_with("/files/complete");
    }
    static bool isPart(const Exchange& exchange) { return exchange.request.verb == "PUT"; }

    /// Answers as a service that takes a file of one part.
    void serve(Exchange& exchange) const {
        if (isCreate(exchange))
            exchange.answer(
                200,
                R"({"code":0,"rapidUpload":false,"exist":false,"fileId":"f","multiParts":[{"partNumber":1,"partSize":5,"partOffset":0,"uploadUrl":")" +
                    server_.url("/part") + R"("}]})");
        else
            exchange.answer(200, R"({"code":0,"id":"folder"})");
    }
    std::string file(const std::string& name) const {
        const auto path = folder_ / name;
        std::ofstream(path) << "hello";
        return path.string();
    }
    std::vector<std::string> line(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "upload");
        arguments.insert(arguments.end(), {"--json", "--host", server_.url(), "--token", "secret-token"});
        return arguments;
    }
    Outcome upload(std::vector<std::string> arguments) const { return run(line(std::move(arguments))); }
    std::string targets() const {
        std::string all;
        for (const auto& request : server_.requests())
            all += request.target.substr(request.target.rfind('/')) + " ";
        return all;
    }

    test_support::TemporaryFolder folder_;
    Script handler_{[this](Exchange& exchange) { serve(exchange); }};
    test_support::ScriptedServer server_{[this](Exchange& exchange) { handler_(exchange); }};
};

TEST_F(UploadTest, WithoutAParentTheParentFolderIsAbsent) {
    fs::create_directory(folder_ / "tree");
    file("tree/a");
    EXPECT_EQ(upload({(folder_ / "tree").string()}).status, 0);
    EXPECT_EQ(server_.requests().at(0).body,
              R"({"fileName":"tree","fileType":"10","renameMode":3,"hidden":false})");
    EXPECT_THAT(server_.requests().at(1).body, HasSubstr(R"("parentFolder":["folder"])"));
}

TEST_F(UploadTest, AnEmptyParentIsAValue) {
    EXPECT_EQ(upload({file("a"), "--parent", "", "--content-id", ""}).status, 0);
    EXPECT_THAT(server_.requests().at(0).body, HasSubstr(R"("parentFolder":[""])"));
    EXPECT_THAT(server_.requests().at(0).body, HasSubstr(R"("containerId":"")"));
}

TEST_F(UploadTest, ARefusedCreateIsToldWithCodeAndMessage) {
    handler_ = [](Exchange& exchange) {
        exchange.answer(507, R"({"code":507,"msg":"quota of secret-token exceeded"})");
    };
    const auto a = file("a");
    const auto result = upload({a});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(failure(a)));
    EXPECT_EQ(result.error, a + ": the service refused to create it: 507 quota of *** exceeded\n");
}

TEST_F(UploadTest, ACreateAnsweredWithACodeIsARefusal) {
    handler_ = [](Exchange& exchange) { exchange.answer(200, R"({"code":4001,"msg":"no"})"); };
    const auto a = file("a");
    EXPECT_EQ(upload({a}).error, a + ": the service refused to create it: 4001 no\n");
}

TEST_F(UploadTest, ARefusedCompleteIsTold) {
    handler_ = [this](Exchange& exchange) {
        isComplete(exchange) ? exchange.answer(409, R"({"code":409,"msg":"a part is missing"})")
                             : serve(exchange);
    };
    const auto a = file("a");
    EXPECT_EQ(upload({a}).error, a + ": the service refused to complete it: 409 a part is missing\n");
}

TEST_F(UploadTest, APartWhoseConnectionBreaksIsTold) {
    handler_ = [this](Exchange& exchange) { isPart(exchange) ? exchange.reset() : serve(exchange); };
    const auto a = file("a");
    const auto result = upload({a});
    EXPECT_THAT(result.lines, Contains(R"({"event":"onItemFinish","file":")" + a +
                                       R"(","subHash":"10","index":0,"isSuccess":false})"));
    EXPECT_EQ(result.lines.back(), failure(a));
    EXPECT_THAT(result.error, StartsWith(a + ": a part could not be sent: "));
}

TEST_F(UploadTest, ARefusedFolderFailsWithAllThatItHolds) {
    handler_ = [](Exchange& exchange) { exchange.answer(403, R"({"code":403,"msg":"no"})"); };
    fs::create_directories(folder_ / "tree/inner");
    const auto a = file("tree/inner/a");
    const auto tree = (folder_ / "tree").string();
    const auto result = upload({tree});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines,
                ElementsAre(R"({"event":"onFailure","file":")" + tree + R"(","code":403,"message":"no"})",
                            R"({"event":"onFailure","file":")" + a + R"(","code":403,"message":"no"})"));
    EXPECT_EQ(result.error,
              tree + ": the service refused to make it: 403 no\n" + a + ": its folder could not be made\n");
    EXPECT_EQ(server_.requestCount(), 1U);
}

TEST_F(UploadTest, WithoutRetriesThereIsOneAttempt) {
    handler_ = [](Exchange& exchange) { exchange.answer(503, "busy"); };
    EXPECT_EQ(upload({file("a")}).status, 1);
    EXPECT_EQ(server_.requestCount(), 1U);
}

TEST_F(UploadTest, AFailedFileStartsAgainFromTheBeginning) {
    handler_ = [this](Exchange& exchange) {
        exchange.request.number <= 3 && isComplete(exchange) ? exchange.answer(503, "busy") : serve(exchange);
    };
    const auto a = file("a");
    const auto result = upload({a, "--retries", "2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(finalEvents(result), ElementsAre(success(a)));
    EXPECT_EQ(targets(), "/create /part /complete /create /part /complete ");
}

TEST_F(UploadTest, AfterTheLastAttemptThereIsOneFailure) {
    handler_ = [](Exchange& exchange) { exchange.answer(503, "busy"); };
    const auto a = file("a");
    const auto result = upload({a, "--retries", "1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(failure(a)));
    EXPECT_EQ(result.error, a + ": the service refused to create it: status 503\n");
    EXPECT_EQ(server_.requestCount(), 2U);
}

TEST_F(UploadTest, ATokenFileThatChangesCountsForTheNextRequest) {
    std::ofstream(folder_ / "token") << "first-token\n";
    test_support::Event created;
    test_support::Event changed;
    handler_ = [&](Exchange& exchange) {
        if (isPart(exchange)) {
            created.set();
            exchange.waitFor(changed);
        }
        serve(exchange);
    };
    QuillboxProcess process({"upload", file("a"), "--json", "--host", server_.url(), "--token-file",
                             (folder_ / "token").string()});
    ASSERT_TRUE(created.wait());
    std::ofstream(folder_ / "token") << "second-token\n";
    changed.set();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(server_.requests().at(0).header("Authorization"), "first-token");
    EXPECT_EQ(server_.requests().at(2).header("Authorization"), "second-token");
}

TEST_F(UploadTest, AFileThatGrowsMeanwhileGoesUpAsItWas) {
    const auto a = file("a");
    handler_ = [this, a](Exchange& exchange) {
        if (isCreate(exchange)) std::ofstream(a, std::ios::app) << " and more";
        serve(exchange);
    };
    EXPECT_EQ(upload({a}).status, 0);
    EXPECT_THAT(server_.requests().at(0).body, HasSubstr(R"("length":5)"));
    EXPECT_EQ(server_.requests().at(1).body, "hello");
}

TEST_F(UploadTest, AFileThatShrinksMeanwhileIsNoSuccess) {
    const auto a = file("a");
    handler_ = [this, a](Exchange& exchange) {
        if (isCreate(exchange)) fs::resize_file(a, 2);
        isComplete(exchange) ? exchange.answer(409, R"({"code":409,"msg":"the hash differs"})")
                             : serve(exchange);
    };
    const auto result = upload({a});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.lines.back(), failure(a));
    EXPECT_THAT(result.error, StartsWith(a + ": "));
}

TEST_F(UploadTest, AtCtrlCThePauseBeforeAnAttemptEnds) {
    handler_ = [](Exchange& exchange) { exchange.answer(503, "busy"); };
    const auto a = file("a");
    auto arguments = line({a, "--retries", "99"});
    std::erase(arguments, "--json");
    QuillboxProcess process(arguments);
    ASSERT_TRUE(process.waitForError("(2 of 99)"));
    process.interrupt();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_LT(server_.requestCount(), 99U);
    EXPECT_THAT(process.error(), HasSubstr(a + ": the service refused to create it: status 503\n"));
}

TEST_F(UploadTest, AtCtrlCTheUploadIsCancelledAndItsEndIsWaitedFor) {
    test_support::Event sending;
    test_support::Event released;
    handler_ = [&](Exchange& exchange) {
        if (isPart(exchange)) {
            sending.set();
            exchange.waitFor(released);
        }
        serve(exchange);
    };
    const auto a = file("a");
    QuillboxProcess process(line({a, file("b"), "--retries", "5"}));
    ASSERT_TRUE(sending.wait());
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for the upload of " + a));
    released.set();
    EXPECT_EQ(process.wait(), 130);
    EXPECT_EQ(process.lines().back(), failure(a));
    EXPECT_THAT(process.error(), HasSubstr(a + ": it was cancelled\n"));
    EXPECT_EQ(targets(), "/create /part ");
}

TEST_F(UploadTest, TheSecondCtrlCEndsTheProcessInTheMiddle) {
    test_support::Event sending;
    handler_ = [&](Exchange& exchange) {
        if (!isPart(exchange)) return serve(exchange);
        sending.set();
        exchange.hold();
    };
    QuillboxProcess process(line({file("a")}));
    ASSERT_TRUE(sending.wait());
    process.interrupt();
    ASSERT_TRUE(process.waitForError("waiting for the upload"));
    process.interrupt();
    EXPECT_EQ(process.wait(), 130);
}

}  // namespace
}  // namespace quillbox_test
