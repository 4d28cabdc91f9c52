#include "tests/quillboxd/jobs_client.h"

namespace quillboxd_test::jobs {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

enum Type { copy = 1, move = 2, remove = 3, unpack = 4 };
enum Status { waiting = 0, running = 1, done = 2, failed = 3, cancelled = 4 };

class JobsTest : public testing::Test {
  protected:
    /// "tree" with the files "a" and "b" and the folder "inner" with the file "c".
    JobsTest() {
        tree_ = client_.makeFolder("tree");
        client_.upload("a", "content a", 1 << 20, tree_);
        client_.upload("b", "content b", 1 << 20, tree_);
        inner_ = client_.makeFolder("inner", tree_);
        client_.upload("c", "content c", 1 << 20, inner_);
        target_ = client_.makeFolder("target");
    }
    std::string idOf(const std::string& name, const std::string& parent) const {
        const auto body = json::serialize(json::object{{"parentFileId", parent}});
        const auto answer = client_.post("/files/list", body).object();
        for (const auto& file : answer.at("files").as_array())
            if (textOf(file.as_object(), "fileName") == name) return textOf(file.as_object(), "id");
        return "";
    }
    static void expectEnd(const json::object& detail, Status status, int result = 0, int code = 0) {
        const auto info = JobsClient::info(detail);
        EXPECT_EQ(JobsClient::number(info, "status"), status) << json::serialize(detail);
        EXPECT_EQ(JobsClient::number(info, "taskResultCode"), result);
        EXPECT_EQ(JobsClient::number(info, "resultCode"), code);
    }

    QuillboxdProcess process_{QuillboxdProcess::Storage::memory};
    JobsClient client_{process_.url()};
    std::string tree_;
    std::string inner_;
    std::string target_;
};

// ---- copying

TEST_F(JobsTest, AFolderIsCopiedWithAllItHolds) {
    const auto detail = client_.run(JobsClient::body(copy, {tree_}, "/target"));
    expectEnd(detail, done);
    const auto info = JobsClient::info(detail);
    EXPECT_EQ(JobsClient::number(info, "contentNum"), 5);
    EXPECT_EQ(JobsClient::number(info, "progress"), 100);
    EXPECT_EQ(textOf(info, "taskName"), "copy");
    EXPECT_EQ(textOf(info, "containerId"), client_.container());
    EXPECT_LE(textOf(info, "createTime"), textOf(info, "beginTime"));
    EXPECT_LE(textOf(info, "beginTime"), textOf(info, "endTime"));
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "filePath"), ElementsAre("/tree"));
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "newFilePath"), ElementsAre("/target/tree"));
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "status"), ElementsAre("2"));
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "resultCode"), ElementsAre("0"));
    const auto made = JobsClient::column(detail, "taskInfos", "newFileId").at(0);
    EXPECT_THAT(client_.names(made), ElementsAre("inner", "a", "b"));
    EXPECT_EQ(client_.download(idOf("c", idOf("inner", made))), "content c");
    EXPECT_THAT(client_.names(tree_), ElementsAre("inner", "a", "b")) << "the original stays";
}

TEST_F(JobsTest, ACopyIsAnItemOfItsOwn) {
    const auto detail = client_.run(JobsClient::body(copy, {tree_}, "/target"));
    const auto made = JobsClient::column(detail, "taskInfos", "newFileId").at(0);
    client_.run(JobsClient::body(remove, {tree_}));
    EXPECT_EQ(client_.download(idOf("a", made)), "content a");
}

TEST_F(JobsTest, AnItemIsNamedByItsPathToo) {
    const json::object task{{"fileInfo", json::array{json::object{{"filePath", "/tree/inner/c"}}}},
                            {"newFilePath", "/"}};
    expectEnd(client_.run({{"taskType", copy}, {"taskInfo", task}}), done);
    EXPECT_EQ(client_.download(idOf("c", "root")), "content c");
}

TEST_F(JobsTest, ANameThatIsTakenIsChangedOrRefused) {
    expectEnd(client_.run(JobsClient::body(copy, {tree_, idOf("a", tree_)}, "/")), done);
    EXPECT_THAT(client_.names(), ElementsAre("target", "tree", "tree (1)", "a"));
    auto strict = JobsClient::body(copy, {idOf("a", tree_), idOf("b", tree_)}, "/");
    strict["actionType"] = 1;
    const auto detail = client_.run(strict);
    expectEnd(detail, failed, 1, 13000405);
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "status"), ElementsAre("3", "2"));
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "resultCode"), ElementsAre("13000405", "0"));
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "resultDesc").at(0), HasSubstr("\"a\" is taken"));
}

TEST_F(JobsTest, AFolderDoesNotGoIntoItself) {
    for (const auto type : {copy, move}) {
        const auto detail = client_.run(JobsClient::body(type, {tree_}, "/tree/inner"));
        expectEnd(detail, failed, 2, 13000409);
        EXPECT_THAT(JobsClient::column(detail, "taskInfos", "resultDesc").at(0), HasSubstr("into itself"));
    }
    EXPECT_THAT(client_.names(inner_), ElementsAre("c"));
}

TEST_F(JobsTest, WhatIsTakenAwayBeforeItsTurnIsLeftOut) {
    client_.allow(1);
    const auto id = client_.start(JobsClient::body(copy, {tree_}, "/target"));
    client_.awaitProgress(id, 20);
    const auto other = client_.start(JobsClient::body(remove, {inner_}));
    client_.cancel(id);
    client_.release();
    expectEnd(client_.awaitEnd(other), done);
    EXPECT_THAT(client_.names(tree_), ElementsAre("a", "b"));
}

TEST(JobsAndSpace, WhatDoesNotFitIsNotCopied) {
    const QuillboxdProcess process(QuillboxdProcess::Storage::memory, {"--quota", "25"});
    const JobsClient client(process.url());
    const auto folder = client.makeFolder("folder");
    client.upload("a", "ten bytes.", 100, folder);
    client.upload("b", "five.", 100, folder);
    const auto detail = client.run(JobsClient::body(copy, {folder}, "/"));
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "resultCode"), 13000507);
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "resultDesc").at(0),
                HasSubstr("15 bytes do not fit"));
    EXPECT_THAT(client.names(), ElementsAre("folder"));
    client.run(JobsClient::body(remove, {folder}));
    EXPECT_EQ(client.get("/space/?type=").object().at("data").at("spaceUsed").as_int64(), 0);
}

// ---- moving

TEST_F(JobsTest, AFolderIsMovedInOneStep) {
    const auto detail = client_.run(JobsClient::body(move, {tree_}, "/target"));
    expectEnd(detail, done);
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "contentNum"), 1);
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "newFileId"), ElementsAre(tree_));
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "newFilePath"), ElementsAre("/target/tree"));
    EXPECT_THAT(client_.names(), ElementsAre("target"));
    EXPECT_THAT(client_.names(tree_), ElementsAre("inner", "a", "b"));
}

TEST_F(JobsTest, AMoveToItsOwnFolderChangesNothing) {
    expectEnd(client_.run(JobsClient::body(move, {tree_}, "/")), done);
    EXPECT_THAT(client_.names(), ElementsAre("target", "tree"));
}

// ---- deleting

TEST_F(JobsTest, AFolderIsDeletedWithAllItHolds) {
    const auto file = idOf("c", inner_);
    const auto detail = client_.run(JobsClient::body(remove, {tree_, inner_}));
    expectEnd(detail, done);
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "contentNum"), 7);
    EXPECT_THAT(client_.names(), ElementsAre("target"));
    expectRefused(client_.post("/files/" + file + "/detail", "{}"), 404, file);
}

TEST_F(JobsTest, AnUploadIntoADeletedFolderIsGivenUp) {
    auto body = client_.createBody("late", "late bytes", 100);
    body["parentFolder"] = json::array{inner_};
    const auto created = client_.Client::create(body).object();
    expectEnd(client_.run(JobsClient::body(remove, {tree_})), done);
    for (const auto& answer : client_.putParts(created, "late bytes")) expectRefused(answer, 404, "part");
    expectRefused(client_.complete(textOf(created, "fileId"), "late bytes"), 404, "no upload");
}

TEST_F(JobsTest, AFileWhoseContentIsBeingReplacedIsDeletedToo) {
    auto body = client_.createBody("a", "other bytes", 100);
    body["parentFolder"] = json::array{tree_};
    body["autoRename"] = 5;
    const auto created = client_.Client::create(body).object();
    expectEnd(client_.run(JobsClient::body(remove, {tree_})), done);
    for (const auto& answer : client_.putParts(created, "other bytes")) expectRefused(answer, 404, "part");
}

TEST_F(JobsTest, WhatComesIntoAFolderMeanwhileIsNotDeleted) {
    client_.allow(1);
    const auto id = client_.start(JobsClient::body(remove, {tree_}));
    client_.awaitProgress(id, 20);
    client_.upload("new", "new bytes", 1 << 20, inner_);
    client_.release();
    const auto detail = client_.awaitEnd(id);
    expectEnd(detail, failed, 1, 13000409);
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "resultDesc").at(0),
                HasSubstr("something came into the folder \"inner\""));
    EXPECT_THAT(client_.names(inner_), ElementsAre("new"));
}

// ---- watching and cancelling

TEST_F(JobsTest, ACancelledJobSaysWhatItHasDone) {
    client_.allow(3);
    const auto id = client_.start(JobsClient::body(copy, {tree_, target_}, "/target"));
    const auto before = client_.awaitProgress(id, 60);
    EXPECT_EQ(JobsClient::number(JobsClient::info(before), "progress"), 60);
    EXPECT_EQ(JobsClient::info(before).if_contains("endTime"), nullptr);
    EXPECT_EQ(textOf(client_.cancel(id).object(), "data"), id);
    client_.release();
    const auto detail = client_.awaitEnd(id);
    expectEnd(detail, cancelled, 1, 13000409);
    EXPECT_EQ(JobsClient::number(JobsClient::info(detail), "progress"), 60);
    EXPECT_THAT(JobsClient::column(detail, "taskInfos", "status"), ElementsAre("4", "3"));
    EXPECT_EQ(JobsClient::column(detail, "taskInfos", "resultDesc").at(0), "3 of 5 done");
    const auto made = JobsClient::column(detail, "taskInfos", "newFileId").at(0);
    EXPECT_THAT(client_.names(made), SizeIs(2)) << "what it has done stays";
    expectRefused(client_.cancel(id), 409, "has ended already");
}

TEST_F(JobsTest, AWaitingJobIsCancelledBeforeItBegins) {
    client_.allow(0);
    const auto id = client_.start(JobsClient::body(remove, {tree_}));
    const auto info = JobsClient::info(client_.detail(id));
    EXPECT_EQ(JobsClient::number(info, "status"), waiting);
    EXPECT_EQ(JobsClient::number(info, "progress"), 0);
    EXPECT_EQ(client_.cancel(id).status, 200);
    client_.release();
    expectEnd(client_.detail(id), cancelled, 2);
    EXPECT_THAT(client_.names(tree_), SizeIs(3));
}

TEST_F(JobsTest, OneJobAfterTheOtherIsDone) {
    client_.allow(0);
    const auto first = client_.start(JobsClient::body(copy, {tree_}, "/target"));
    const auto second = client_.start(JobsClient::body(remove, {tree_}));
    client_.release();
    expectEnd(client_.awaitEnd(second), done);
    expectEnd(client_.detail(first), done);
    EXPECT_THAT(client_.names(target_), ElementsAre("tree"));
}

class JobListTest : public JobsTest {
  protected:
    std::vector<std::string> list(const std::string& query) const {
        const auto answer = client_.get("/jobs?" + query);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return JobsClient::column(answer.object(), "data", "taskId");
    }
};

TEST_F(JobListTest, TheNewestJobComesFirst) {
    const auto first = client_.start(JobsClient::body(copy, {tree_}, "/target"));
    const auto second = client_.start(JobsClient::body(copy, {target_}, "/target"));
    const auto third = client_.start(JobsClient::body(remove, {tree_}));
    client_.awaitEnd(third);
    EXPECT_THAT(list("offset=0&limit=100"), ElementsAre(third, second, first));
    EXPECT_THAT(list(""), ElementsAre(third, second, first));
    EXPECT_THAT(list("offset=1&limit=1"), ElementsAre(second));
    EXPECT_THAT(list("offset=3"), IsEmpty());
    EXPECT_THAT(list("type=1"), ElementsAre(second, first));
    EXPECT_THAT(list("status=3"), ElementsAre(second));
    EXPECT_THAT(list("type=3&status=3"), IsEmpty());
    EXPECT_THAT(list("type=9"), IsEmpty());
    EXPECT_THAT(list("type=-1&status=-1"), ElementsAre(third, second, first));
    const auto row = client_.get("/jobs?limit=1").object().at("data").as_array().at(0).as_object();
    EXPECT_EQ(JobsClient::number(row, "taskType"), 3);
    EXPECT_EQ(JobsClient::number(row, "contentNum"), 5);
    EXPECT_EQ(JobsClient::number(row, "resultCode"), 0);
}

TEST_F(JobListTest, APageIsAskedForWithNumbers) {
    expectRefused(client_.get("/jobs?offset=-1"), 400, "offset");
    expectRefused(client_.get("/jobs?limit=0"), 400, "limit");
    expectRefused(client_.get("/jobs?limit=x"), 400, "limit");
    expectRefused(client_.get("/jobs?type=x"), 400, "type");
    expectRefused(client_.get("/jobs?status=x"), 400, "status");
}

TEST_F(JobListTest, AnotherAccountHasItsOwnJobs) {
    const auto id = client_.start(JobsClient::body(copy, {tree_}, "/target"));
    const JobsClient other(process_.url(), "other");
    EXPECT_THAT(other.get("/jobs").object().at("data").as_array(), SizeIs(0));
    expectRefused(other.get("/" + id), 404, "no job");
    expectRefused(other.cancel(id), 404, "no job");
    expectRefused(other.create(JobsClient::body(copy, {tree_}, "/")), 404, tree_);
}

// ---- refusals

TEST_F(JobsTest, AnUnknownJobIsRefused) {
    expectRefused(client_.get("/999"), 404, "no job \"999\"");
    expectRefused(client_.get("/nothing"), 404, "no job \"nothing\"");
    expectRefused(client_.get("/"), 404, "no endpoint");
    expectRefused(client_.cancel("999"), 404, "no job");
    expectRefused(client_.post("/cancel", "{}"), 400, "jobId");
    expectRefused(client_.post("/cancel", R"({"jobId":1})"), 400, "must be a text");
}

TEST_F(JobsTest, AJobNeedsItsTypeAndItsItems) {
    const auto refused = [&](const std::string& body, int status, const std::string& words) {
        expectRefused(client_.post("/jobs", body), status, words);
    };
    refused("{}", 400, "taskType");
    refused(R"({"taskType":5})", 400, "taskType");
    refused(R"({"taskType":"1"})", 400, "must be an integer");
    refused(R"({"taskType":1,"actionType":3})", 400, "actionType");
    refused(R"({"taskType":1})", 400, "fileInfo");
    refused(R"({"taskType":1,"taskInfo":{"fileInfo":[]}})", 400, "fileInfo");
    refused(R"({"taskType":1,"taskInfo":{"fileInfo":[{}]}})", 400, "filePath");
    refused(R"({"taskType":1,"taskInfo":{"fileInfo":[{"fileId":1}]}})", 400, "fileInfo[0].fileId");
    refused(R"({"taskType":1,"taskInfo":{"fileInfo":[{"filePath":"tree"}]}})", 400, "slash");
    refused(R"({"taskType":1,"taskInfo":{"fileInfo":[{"filePath":"/tree/none"}]}})", 404, "/tree/none");
    refused(R"({"taskType":3,"taskInfo":{"fileInfo":[{"fileId":"none"}]}})", 404, "none");
    refused(R"({"taskType":3,"taskInfo":{"fileInfo":[{"fileId":"root"}]}})", 403, "root folder");
    refused(R"({"taskType":3,"taskInfo":{"fileInfo":[{"filePath":"/"}]}})", 403, "root folder");
    refused(R"({"taskType":1,"taskInfo":{"fileInfo":[{"filePath":"/tree"}]}})", 400, "newFilePath");
    const auto to = [](const std::string& path) {
        return R"({"taskType":2,"taskInfo":{"fileInfo":[{"filePath":"/tree"}],"newFilePath":")" + path +
               "\"}}";
    };
    refused(to("/none"), 404, "/none");
    refused(to("/tree/a"), 400, "not a folder");
    refused(R"({"taskType":4,"taskInfo":{"fileInfo":[{"filePath":"/tree"}]}})", 400, "not an archive");
    refused(R"({"taskType":1,"dstContainerId":"1"})", 403, "container");
    refused(R"({"taskType":1,"taskInfo":{"srcContainerId":"1"}})", 403, "container");
    EXPECT_THAT(client_.get("/jobs").object().at("data").as_array(), SizeIs(0));
}

TEST_F(JobsTest, TooManyItemsAreRefused) {
    const std::vector<std::string> ids(1001, tree_);
    expectRefused(client_.create(JobsClient::body(remove, ids)), 400, "1,000");
}

TEST_F(JobsTest, TheStepsThatAreAllowedAreANumber) {
    const auto hold = [&](const std::string& body) {
        return send("POST", process_.url() + "/_dev/jobs", {}, body);
    };
    expectRefused(hold("{}"), 400, "steps");
    expectRefused(hold(R"({"steps":-1})"), 400, "steps");
}

TEST_F(JobsTest, AResetForgetsJobsAndLetsTheNextOnesGoOn) {
    client_.allow(0);
    const auto id = client_.start(JobsClient::body(remove, {tree_}));
    EXPECT_EQ(send("POST", process_.url() + "/_dev/reset").status, 200);
    const JobsClient again(process_.url());
    expectRefused(again.get("/" + id), 404, "no job");
    const auto folder = again.makeFolder("folder");
    expectEnd(again.run(JobsClient::body(remove, {folder})), done);
}

}  // namespace
}  // namespace quillboxd_test::jobs
