#include "baseapi/transfer/upload_process_task.h"

#include <stdexcept>

#include "baseapi/transfer/i_transfer.h"
#include "tests/transfer/upload_fixture.h"

namespace baseapi {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* failed = "onFailure 100016 file invaild";

class UploadProcessTest : public UploadTest {
  protected:
    std::shared_ptr<Cancelable> upload(const URL& file,
                                       std::shared_ptr<ISliceFile> slicer = slicerOf(onePart)) {
        return CloudInstance::shared().getTransferImpl().uploadFile("folder-1", file, "", 4,
                                                                    std::move(slicer), events_.callback());
    }
    /// Uploads a small file and gives the last event.
    std::string uploadSmall() {
        upload(fileOf("abc"));
        return events_.waitForLast();
    }
    std::string bodyOf(std::size_t request) const { return server_->requests().at(request).body; }

    /// An answer that waits until the test lets it go.
    ScriptedServer::Handler heldBack(int status, const std::string& body) {
        return [=, this](Exchange& exchange) {
            EXPECT_TRUE(exchange.waitFor(letGo_));
            exchange.answer(status, body);
        };
    }
    bool waitForRelease() const { return waitForLine("UploadProcessTask release self "); }
    static bool waitForLine(std::string_view beginning) {
        return test_support::recordingLog().waitForBeginning(beginning);
    }

    UploadEvents events_;
    Event letGo_;
};

// The service's answers.

TEST_F(UploadProcessTest, EndsInSuccessWhenTheServiceHasTheContent) {
    on(create, 200, R"({"code":0,"msg":"ok","rapidUpload":true})");
    EXPECT_EQ(uploadSmall(), "onSuccess 0 rapid success");
    EXPECT_THAT(calls(), ElementsAre(create));
    EXPECT_TRUE(logged("file is rapid"));
    EXPECT_EQ(events_.lastEvents(), 1U);
}

TEST_F(UploadProcessTest, EndsInSuccessWhenTheFileExists) {
    on(create, 200, R"({"code":0,"msg":"ok","rapidUpload":false,"exist":true})");
    EXPECT_EQ(uploadSmall(), "onSuccess 0 exist success");
    EXPECT_THAT(calls(), ElementsAre(create));
    EXPECT_TRUE(logged("file is exist"));
}

TEST_F(UploadProcessTest, CompletesAtOnceWithoutParts) {
    on(create, 200, createdWithParts({}));
    EXPECT_EQ(uploadSmall(), "onSuccess 0 success");
    EXPECT_THAT(calls(), ElementsAre(create, complete));
    EXPECT_EQ(bodyOf(1), R"({"fileId":"file-1","sha256":"whole-hash"})");
}

TEST_F(UploadProcessTest, CreatesSendsThePartsAndCompletes) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({3, 3, 4}));
    for (const auto* part : {"PUT /part/1", "PUT /part/2", "PUT /part/3"}) on(part, 200);
    upload(fileOf("0123456789"));
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");

    const auto requests = server_->requests();
    ASSERT_EQ(requests.size(), 5U);
    EXPECT_EQ(calls().front(), create);
    EXPECT_EQ(calls().back(), complete);
    std::map<std::string, std::string> bodies;
    for (std::size_t i = 1; i < 4; ++i) bodies[requests[i].target] = requests[i].body;
    EXPECT_THAT(bodies, ElementsAre(testing::Pair("/part/1", "012"), testing::Pair("/part/2", "345"),
                                    testing::Pair("/part/3", "6789")));
    EXPECT_EQ(requests[0].header("Authorization"), "token");
    EXPECT_FALSE(requests[1].header("Authorization"));
    EXPECT_THAT(events_.all(), Contains(StartsWith("onProgress 10/0")));
    EXPECT_THAT(events_.all(), Contains("onItemFinish 10 0 true"));
    EXPECT_THAT(events_.all(), Contains("onItemFinish 23 0 true"));
    EXPECT_THAT(events_.all(), Contains("onItemFinish 36 0 true"));
    EXPECT_EQ(events_.lastEvents(), 1U);
}

TEST_F(UploadProcessTest, SendsTheWholeCreateRecord) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    upload(fileOf("hello, world", "report.pdf"),
           slicerOf(R"({"mimeType":"x/y","size":999,"hash":"AbC","parts":[)"
                    R"({"partNumber":5,"partOffset":8,"partSize":4,"hashCtx":[1,2]},)"
                    R"({"partNumber":5,"partOffset":0,"partSize":8}]})"));
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    EXPECT_EQ(bodyOf(0), R"({"mimeType":"application/pdf","fileName":"report.pdf","fileType":"45",)"
                         R"("parentFolder":["folder-1"],"sha256":"AbC","length":12,"uploadMode":"multipart",)"
                         R"("uploadType":1,"autoRename":4,"multiParts":[)"
                         R"({"partNumber":1,"partSize":4,"partOffset":8,"hashCtx":[1,2]},)"
                         R"({"partNumber":2,"partSize":8,"partOffset":0}],"containerId":"container",)"
                         R"("proofCode":"045f13dd864bafaad0dd977ac971de549b090cb2836f061d0779b26dd9bb8f4b",)"
                         R"("hidden":false,"scene":""})");
}

TEST_F(UploadProcessTest, ProvesWithTheEmptyTokenWhereThereIsNone) {
    CloudInstance::shared().token = std::nullopt;
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    upload(fileOf("hello, world"));
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    EXPECT_THAT(
        bodyOf(0),
        HasSubstr(R"("proofCode":"e5a08ffd3d7509c66e79642edbdcd8ed889269a7164c718afca541304188423d")"));
    EXPECT_FALSE(server_->requests().at(0).header("Authorization"));
}

TEST_F(UploadProcessTest, SendsAnEmptyFileWithoutAProof) {
    on(create, 200, createdWithParts({}));
    upload(fileOf(""), slicerOf(R"({"size":0,"hash":"h","parts":[]})"));
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    EXPECT_THAT(bodyOf(0), HasSubstr(R"("length":0,)"));
    EXPECT_THAT(bodyOf(0), testing::Not(HasSubstr("proofCode")));
    EXPECT_TRUE(logged("creareOrgFile proofCode nil"));
    EXPECT_THAT(calls(), ElementsAre(create, complete));
}

TEST_F(UploadProcessTest, SendsTheEmptyPartOfAnEmptyFile) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({0}));
    on("PUT /part/1", 200);
    upload(fileOf(""),
           slicerOf(R"({"size":0,"hash":"h","parts":[{"partNumber":1,"partOffset":0,"partSize":0}]})"));
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    EXPECT_EQ(server_->requests().at(1).header("Content-Length"), "0");
}

TEST_F(UploadProcessTest, CountsAPartThatWasAnswered403AsSent) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({3}));
    on("PUT /part/1", 403, "expired");
    EXPECT_EQ(uploadSmall(), "onSuccess 0 success");
    EXPECT_THAT(calls(), ElementsAre(create, "PUT /part/1", complete));
}

TEST_F(UploadProcessTest, FailsWithoutCompletingWhenAPartBreaksAndStillSendsTheOthers) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({1, 1, 1}));
    on("PUT /part/1", [](Exchange& exchange) { exchange.reset(); });
    on("PUT /part/2", 200);
    on("PUT /part/3", 200);
    EXPECT_EQ(uploadSmall(), failed);
    EXPECT_THAT(calls(), testing::UnorderedElementsAre(create, "PUT /part/1", "PUT /part/2", "PUT /part/3"));
    EXPECT_TRUE(logged("上传失败: 错误码 -1, 消息: upload part failed"));
    EXPECT_TRUE(waitForRelease());
    EXPECT_EQ(events_.lastEvents(), 1U);
}

TEST_F(UploadProcessTest, FailsWhenTheServiceRefusesToCreate) {
    on(create, 507, R"({"code":1507,"msg":"quota exceeded"})");
    EXPECT_EQ(uploadSmall(), failed);
    EXPECT_THAT(calls(), ElementsAre(create));
    EXPECT_TRUE(logged("filesCreateRequest failure code = 1507, msg = quota exceeded"));
}

TEST_F(UploadProcessTest, FailsWhenAnAnswerIsNotWhole) {
    on(create, [](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{\"code\":0,\"rapidUpload\":true}");
        exchange.close();
    });
    EXPECT_EQ(uploadSmall(), failed);
    EXPECT_THAT(calls(), ElementsAre(create));  // one attempt
}

TEST_F(UploadProcessTest, FailsWhenTheAnswerIsNoRecord) {
    on(create, 200, "<html>");
    EXPECT_EQ(uploadSmall(), failed);
    EXPECT_THAT(calls(), ElementsAre(create));
}

TEST_F(UploadProcessTest, FailsWhenNobodyIsThere) {
    CloudInstance::shared().host = "http://127.0.0.1:1";
    EXPECT_EQ(uploadSmall(), failed);
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(UploadProcessTest, FailsWhenTheCreatedRecordHasACode) {
    on(create, 200, R"({"code":4001,"msg":"no"})");
    EXPECT_EQ(uploadSmall(), failed);
    EXPECT_THAT(calls(), ElementsAre(create));
    EXPECT_TRUE(logged(R"(filesCreateRequest success resp = {"code":4001,"msg":"no"})"));
    EXPECT_TRUE(logged("file create failed:no"));
}

TEST_F(UploadProcessTest, FailsWhenTheServiceRefusesToComplete) {
    on(create, 200, createdWithParts({}));
    on(complete, 500, R"({"code":1500,"msg":"wrong hash"})");
    EXPECT_EQ(uploadSmall(), failed);
    EXPECT_TRUE(logged("filesCompleteRequest failure code = 1500, msg = wrong hash"));
}

TEST_F(UploadProcessTest, SucceedsWhateverCodeTheCompleteRecordHolds) {
    on(create, 200, createdWithParts({}));
    on(complete, 200, R"({"code":4001,"msg":"no"})");
    EXPECT_EQ(uploadSmall(), "onSuccess 0 success");
}

// The file and the slicer.

TEST_F(UploadProcessTest, FailsBeforeItReturnsForWhatIsNoFile) {
    upload(URL("https://example.org/photo.jpg"));
    EXPECT_THAT(events_.all(), ElementsAre(failed));
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(UploadProcessTest, FailsBeforeItReturnsWithoutASlicer) {
    upload(fileOf("abc"), nullptr);
    EXPECT_THAT(events_.all(), ElementsAre(failed));
}

TEST_F(UploadProcessTest, FailsWhenTheSlicerGivesNoText) {
    upload(fileOf("abc"), slicerOf(std::nullopt));
    EXPECT_THAT(events_.all(), ElementsAre(failed));
    EXPECT_TRUE(logged("filesCreateRequest get sha256 nil"));
}

TEST_F(UploadProcessTest, TakesASlicerThatThrowsAsOneThatGivesNoText) {
    upload(fileOf("abc"), std::make_shared<TestSlicer>([](const URL&) -> std::optional<std::string> {
               throw std::runtime_error("broken slicer");
           }));
    EXPECT_THAT(events_.all(), ElementsAre(failed));
    EXPECT_TRUE(logged("callback threw: broken slicer"));
    EXPECT_TRUE(logged("filesCreateRequest get sha256 nil"));
}

TEST_F(UploadProcessTest, FailsForATextThatIsNotUTF8) {
    upload(fileOf("abc"), slicerOf("{\"hash\":\"\xff\"}"));
    EXPECT_THAT(events_.all(), ElementsAre(failed));
    EXPECT_TRUE(logged("Unable to convert JSON string to Data"));
}

TEST_F(UploadProcessTest, FailsForATextThatDoesNotDecode) {
    for (const auto* text : {"", "no JSON", "[]", "{}", R"({"size":"3","hash":"h","parts":[]})"}) {
        UploadEvents events;
        test_support::recordingLog().clear();
        CloudInstance::shared().getTransferImpl().uploadFile("", fileOf("abc"), "", 4, slicerOf(text),
                                                             events.callback());
        EXPECT_THAT(events.all(), ElementsAre(failed)) << text;
        EXPECT_THAT(test_support::recordingLog().lines(), Contains(StartsWith("JSON decoding failed: ")))
            << text;
    }
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(UploadProcessTest, FailsWhenTheFileHasNoLength) {
    upload(URL::file(folder_ / "missing"));
    EXPECT_THAT(events_.all(), ElementsAre(failed));
    EXPECT_TRUE(logged("获取文件大小失败: No such file or directory"));
    EXPECT_TRUE(logged("filesCreateRequest length is nil."));
}

TEST_F(UploadProcessTest, FailsWhenTheFileHasGoneOnceItIsCreated) {
    const auto file = fileOf("abc");
    on(create, [&](Exchange& exchange) {
        std::filesystem::remove(file.path());
        exchange.answer(200, createdWithParts({3}));
    });
    upload(file);
    EXPECT_EQ(events_.waitForLast(), failed);
    EXPECT_TRUE(logged("文件打开失败: " + file.text() + ": No such file or directory"));
    EXPECT_THAT(calls(), ElementsAre(create));
}

TEST_F(UploadProcessTest, SendsTheFileAsItHasBecomeAndLeavesTheJudgementToTheService) {
    BASEAPI_NEEDS_PARTS();
    const auto file = fileOf("0123456789");
    on(create, [&](Exchange& exchange) {
        fileOf("shorter");
        exchange.answer(200, createdWithParts({4, 4, 2}));
    });
    for (const auto* part : {"PUT /part/1", "PUT /part/2", "PUT /part/3"}) on(part, 200);
    on(complete, 400, R"({"code":1400,"msg":"wrong hash"})");
    upload(file);
    EXPECT_EQ(events_.waitForLast(), failed);
    std::map<std::string, std::string> bodies;
    for (const auto& request : server_->requests())
        if (request.verb == "PUT") bodies[request.target] = request.body;
    EXPECT_THAT(bodies, ElementsAre(testing::Pair("/part/1", "shor"), testing::Pair("/part/2", "ter"),
                                    testing::Pair("/part/3", "")));
    EXPECT_EQ(events_.lastEvents(), 1U);
}

TEST_F(UploadProcessTest, HashesTheFileOnceOnTheCallersThread) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    int calls = 0;
    std::thread::id thread;
    upload(fileOf("abc"), std::make_shared<TestSlicer>([&](const URL& of) -> std::optional<std::string> {
               ++calls;
               thread = std::this_thread::get_id();
               EXPECT_EQ(of.lastPathComponent(), "photo.jpg");
               return onePart;
           }));
    EXPECT_EQ(thread, std::this_thread::get_id());
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    EXPECT_EQ(calls, 1);
}

// Cancelling.

TEST_F(UploadProcessTest, CancelledBeforeTheCreateAnswerFails) {
    on(create, heldBack(200, createdWithParts({3})));
    const auto task = upload(fileOf("abc"));
    ASSERT_TRUE(server_->waitForRequests(1));
    task->cancel();
    letGo_.set();
    EXPECT_EQ(events_.waitForLast(), failed);
    EXPECT_TRUE(logged("uploadProcessTask cancel"));
    EXPECT_TRUE(logged("UploadManager: UploadManager cancel"));
    EXPECT_TRUE(logged("file hasCancel"));
    EXPECT_THAT(calls(), ElementsAre(create));
}

TEST_F(UploadProcessTest, CancelledBeforeARapidAnswerSucceeds) {
    on(create, heldBack(200, R"({"code":0,"rapidUpload":true})"));
    const auto task = upload(fileOf("abc"));
    task->cancel();
    letGo_.set();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
}

TEST_F(UploadProcessTest, CancelledBeforeAnAnswerThatItExistsSucceeds) {
    on(create, heldBack(200, R"({"code":0,"rapidUpload":false,"exist":true})"));
    const auto task = upload(fileOf("abc"));
    task->cancel();
    letGo_.set();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 exist success");
}

TEST_F(UploadProcessTest, CancelledWithPartsInFlightFailsOnce) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({1, 1, 1}));
    for (const auto* part : {"PUT /part/1", "PUT /part/2", "PUT /part/3"}) on(part, heldBack(200, ""));
    const auto task = upload(fileOf("abc"));
    const auto inFlight = static_cast<std::size_t>(std::min(ThreadPoolUtil::queue().width(), 3));
    ASSERT_TRUE(server_->waitForRequests(1 + inFlight));
    task->cancel();
    letGo_.set();
    EXPECT_EQ(events_.waitForLast(), failed);
    const OccupiedQueue allReported;
    drainMainQueue();
    EXPECT_EQ(events_.lastEvents(), 1U);
    EXPECT_EQ(server_->requestCount(), 1 + inFlight);
    EXPECT_THAT(calls(), testing::Not(Contains(complete)));
}

TEST_F(UploadProcessTest, CancelledWithNoPartInFlightGivesNoLastEvent) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({1, 1, 1}));
    // It stays alive, as nothing ends it; kept here so that nobody takes it for lost.
    static std::shared_ptr<Cancelable> task;
    {
        const OccupiedQueue occupied;
        task = upload(fileOf("abc"));
        ASSERT_TRUE(waitForLine("响应数据: "));  // logged when all parts are in the queue
        task->cancel();
    }
    const OccupiedQueue allRun;
    drainMainQueue();
    EXPECT_THAT(events_.all(), IsEmpty());
    EXPECT_THAT(calls(), ElementsAre(create));
    EXPECT_FALSE(test_support::recordingLog().containsBeginning("UploadProcessTask release self "));
}

TEST_F(UploadProcessTest, CancelledWhileItCompletesEndsNormally) {
    on(create, 200, createdWithParts({}));
    on(complete, heldBack(200, R"({"code":0})"));
    const auto task = upload(fileOf("abc"));
    ASSERT_TRUE(server_->waitForRequests(2));
    task->cancel();
    letGo_.set();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
}

TEST_F(UploadProcessTest, CancelledWhileItHashesFailsAfterTheAnswer) {
    on(create, 200, createdWithParts({3}));
    const auto task = std::make_shared<UploadProcessTask>();
    task->file = fileOf("abc");
    task->onCallback = events_.callback();
    task->defaultSliceFile = std::make_shared<TestSlicer>([&](const URL&) -> std::optional<std::string> {
        task->cancel();
        return onePart;
    });
    task->run();
    EXPECT_EQ(events_.waitForLast(), failed);
    EXPECT_THAT(calls(), ElementsAre(create));
}

TEST_F(UploadProcessTest, CancelledBeforeItRunsFailsWithoutHashing) {
    const auto task = std::make_shared<UploadProcessTask>();
    task->file = fileOf("abc");
    task->onCallback = events_.callback();
    task->defaultSliceFile = std::make_shared<TestSlicer>([](const URL&) -> std::optional<std::string> {
        ADD_FAILURE() << "hashed";
        return std::nullopt;
    });
    task->cancel();
    task->run();
    EXPECT_THAT(events_.all(), ElementsAre(failed));
}

TEST_F(UploadProcessTest, CancelledAfterItsEndDoesNothing) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    const auto task = upload(fileOf("abc"));
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    task->cancel();
    drainMainQueue();
    EXPECT_EQ(events_.lastEvents(), 1U);
}

// The record of what happened, and its end.

TEST_F(UploadProcessTest, LogsItsWay) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({3}));
    on("PUT /part/1", 200);
    const auto task = std::make_shared<UploadProcessTask>();
    const auto stamp = std::to_string(task->timeStamp);
    task->cloudPath = "folder-1";
    task->file = fileOf("abc");
    task->defaultSliceFile = slicerOf(onePart);
    task->onCallback = events_.callback();
    task->run();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    ASSERT_TRUE(waitForLine("filesCompleteRequest success resp = "));

    const auto url = server_->url("/part/1");
    const std::vector<std::string> expected{
        "filesCreateRequest length 3",
        "creareOrgFile sha256 whole-hash",
        "creareOrgFile proofCode ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
        R"(filesCreateRequest success resp = {"fileId":"file-1","rapidUpload":false,"exist":false,"multiParts":)"
        R"([{"partNumber":1,"partSize":3,"partOffset":0,"uploadUrl":")" +
            url + R"("}],"code":0,"msg":"ok"})",
        "UploadProcessTask, start upload multiParts, fileid = file-1",
        "UploadProcessTask, uploadManager subHash = 10, task = UploadTask hash 10, offset 0, length 3",
        "UploadProcessTask, uploadManager continue hasDownloadSize = 0",
        "UploadManager: uploadManager submit curTask Size = 1",
        "UploadTask: 开始执行上传任务",
        "UploadTask: start upload, hash = 10",
        "putUploadFile bytes size = 3",
        "UploadTask: onSuccess ret = success",
        "子项 0 (10) 处理true",
        "UploadManager: checkOnComplete",
        "upload process task 上传成功: 状态码 0, 消息: success",
        "====start submitComplete, fileId = file-1====",
        "UploadProcessTask release self " + stamp,
        R"(filesCompleteRequest success resp = {"code":0,"msg":"done"})"};
    std::vector<std::string> seen;
    for (const auto& line : test_support::recordingLog().lines())
        if (std::ranges::find(expected, line) != expected.end()) seen.push_back(line);
    EXPECT_EQ(seen, expected);
    EXPECT_TRUE(logged("上传进度: 3/0 字节"));
}

TEST_F(UploadProcessTest, TellsThatAPartHasEndedBeforeItTellsTheEnd) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({3}));
    on("PUT /part/1", 200);
    EXPECT_EQ(uploadSmall(), "onSuccess 0 success");
    EXPECT_THAT(events_.withoutProgress(), ElementsAre("onItemFinish 10 0 true", "onSuccess 0 success"));
}

TEST_F(UploadProcessTest, GoesOnWhenTheHostsCallbackThrows) {
    BASEAPI_NEEDS_PARTS();
    on(create, 200, createdWithParts({3}));
    on("PUT /part/1", 200);
    CloudInstance::shared().getTransferImpl().uploadFile(
        "folder-1", fileOf("abc"), "", 4, slicerOf(onePart),
        [&, note = events_.callback()](const UploadProcessResult& event) {
            note(event);
            throw std::runtime_error("broken host");
        });
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 success");
    EXPECT_TRUE(waitForRelease());
    EXPECT_TRUE(logged("callback threw: broken host"));
}

TEST_F(UploadProcessTest, RunsToItsEndWithoutACallback) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    CloudInstance::shared().getTransferImpl().uploadFile("folder-1", fileOf("abc"), "", 4, slicerOf(onePart),
                                                         nullptr);
    EXPECT_TRUE(waitForRelease());
}

TEST_F(UploadProcessTest, KeepsItselfUntilItsEndAndNoLonger) {
    on(create, heldBack(200, R"({"code":0,"rapidUpload":true})"));
    const std::weak_ptr<Cancelable> task = upload(fileOf("abc"));
    ASSERT_TRUE(server_->waitForRequests(1));
    EXPECT_FALSE(task.expired());
    letGo_.set();
    EXPECT_EQ(events_.waitForLast(), "onSuccess 0 rapid success");
    EXPECT_TRUE(waitForRelease());
    while (!task.expired()) std::this_thread::yield();  // the line comes a moment before the object goes
}

TEST_F(UploadProcessTest, ForwardsThatTheFileWasCreatedWhenItsManagerSaysSo) {
    on(create, 200, createdWithParts({1}));
    on("PUT /part/1", heldBack(200, ""));
    const auto task = std::make_shared<UploadProcessTask>();
    task->file = fileOf("abc");
    task->defaultSliceFile = slicerOf(onePart);
    task->onCallback = events_.callback();
    task->run();
    ASSERT_TRUE(waitForLine("task in UploadTask hash 10"));
    FilesCreateResponse response;
    response.fileId = "file-1";
    task->uploadManager->onTotalCallback({UploadProcessResult::onFileCreate{response}});
    EXPECT_THAT(events_.all(), Contains("onFileCreate file-1"));
    EXPECT_TRUE(logged(R"(文件创建响应: {"fileId":"file-1"})"));
    task->uploadManager->onTotalCallback({UploadProcessResult::onFailure{-1, "x"}});
    EXPECT_EQ(events_.waitForLast(), failed);
    letGo_.set();
    const OccupiedQueue allReported;
    drainMainQueue();
    EXPECT_EQ(events_.lastEvents(), 1U);
}

// What the service must send.

class UploadProcessDeathTest : public UploadProcessTest {
  protected:
    void uploadWithAnswer(const std::string& answer) {
        on(create, 200, answer);
        uploadSmall();
    }
};

TEST_F(UploadProcessDeathTest, EndsTheProcessWhenTheCreatedRecordLacksWhatIsRead) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(uploadWithAnswer("{}"), "lacks code");
    EXPECT_DEATH(uploadWithAnswer(R"({"code":1})"), "lacks msg");
    EXPECT_DEATH(uploadWithAnswer(R"({"code":0})"), "lacks rapidUpload");
    EXPECT_DEATH(uploadWithAnswer(R"({"code":0,"rapidUpload":false})"), "lacks exist");
    EXPECT_DEATH(uploadWithAnswer(R"({"code":0,"rapidUpload":false,"exist":false,"multiParts":[]})"),
                 "lacks fileId");
    EXPECT_DEATH(uploadWithAnswer(R"({"code":0,"rapidUpload":false,"exist":false,"fileId":"f"})"),
                 "lacks multiParts");
    EXPECT_DEATH(uploadWithAnswer(R"({"code":0,"rapidUpload":false,"exist":false,"fileId":"f",)"
                                  R"("multiParts":[{"partNumber":1,"partSize":1,"partOffset":0}]})"),
                 "lacks uploadUrl");
}

}  // namespace
}  // namespace baseapi
