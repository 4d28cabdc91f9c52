#include "baseapi/transfer/transfer_impl.h"

#include "tests/transfer/upload_fixture.h"

namespace baseapi {
namespace {

using testing::HasSubstr;
using testing::Not;

class TransferImplTest : public UploadTest {
  protected:
    std::string createBodyOf(std::optional<std::string> cloudPath, const std::string& fileId,
                             std::int64_t autoRename) {
        UploadEvents events;
        transfer_.uploadFile(std::move(cloudPath), fileOf("abc"), fileId, autoRename, slicer_,
                             events.callback());
        EXPECT_EQ(events.waitForLast(), "onSuccess 0 rapid success");
        return server_->requests().back().body;
    }

    TransferImpl transfer_;
    std::shared_ptr<ISliceFile> slicer_ = slicerOf(R"({"size":3,"hash":"h","parts":[]})");
};

TEST_F(TransferImplTest, UploadsIntoTheFolderOrTheRoot) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    EXPECT_THAT(createBodyOf("folder-7", "", 4), HasSubstr(R"("parentFolder":["folder-7"])"));
    EXPECT_THAT(createBodyOf("", "", 4), HasSubstr(R"("parentFolder":[""])"));
    EXPECT_THAT(createBodyOf("/a/b", "", 4), HasSubstr(R"("parentFolder":["/a/b"])"));
    EXPECT_THAT(createBodyOf(std::nullopt, "", 4), HasSubstr(R"("parentFolder":["root"])"));
}

TEST_F(TransferImplTest, DropsTheFileIdAndThePolicyOfNames) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    const auto body = createBodyOf("folder-1", "file-9", 0);
    EXPECT_THAT(body, HasSubstr(R"("autoRename":4)"));
    EXPECT_THAT(body, Not(HasSubstr("file-9")));
}

TEST_F(TransferImplTest, ReadsTheContainerWhenTheUploadStarts) {
    Event letGo;
    on(create, [&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(letGo));
        exchange.answer(200, createdWithParts({}));
    });
    UploadEvents events;
    CloudInstance::shared().contentId = "first";
    transfer_.uploadFile("folder-1", fileOf("abc"), "", 4, slicer_, events.callback());
    CloudInstance::shared().contentId = "second";
    letGo.set();
    EXPECT_EQ(events.waitForLast(), "onSuccess 0 success");
    EXPECT_THAT(server_->requests().at(0).body, HasSubstr(R"("containerId":"first")"));
}

TEST_F(TransferImplTest, LeavesTheContainerOutWhereThereIsNone) {
    on(create, 200, R"({"code":0,"rapidUpload":true})");
    CloudInstance::shared().contentId = std::nullopt;
    EXPECT_THAT(createBodyOf("folder-1", "", 4), Not(HasSubstr("containerId")));
}

TEST_F(TransferImplTest, DownloadsIntoTheFile) {
    on("GET /content", 200, "content");
    Event ended;
    std::optional<URL> success;
    const auto place = URL::file(folder_ / "new/place");
    const auto handle = transfer_.downloadFile(
        URL(server_->url("/content")), "file-9", place, nullptr, [&](const DownloadResult& result) {
            if (const auto* it = std::get_if<DownloadResult::success>(&result.value)) success = it->file;
            ended.set();
        });
    ASSERT_TRUE(ended.wait());
    EXPECT_EQ(success, place);
    std::string content;
    std::ifstream(place.path()) >> content;
    EXPECT_EQ(content, "content");
    EXPECT_EQ(calls(), std::vector<std::string>{"GET /content"});
}

TEST_F(TransferImplTest, MakesAnObjectForEachDownloadThatKnowsNothingOfAnother) {
    on("GET /content", [](Exchange& exchange) {
        if (exchange.request.number == 2) return exchange.answer(200, "whole");
        exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 10\r\n\r\n01234");
        exchange.hold();
    });
    const URL url(server_->url("/content"));
    const auto place = URL::file(folder_ / "place");
    Event arrived;
    Event cut;
    const auto first = transfer_.downloadFile(
        url, "", place, [&](double) { arrived.set(); }, [&](const DownloadResult&) { cut.set(); });
    ASSERT_TRUE(arrived.wait());
    first->cancel();
    ASSERT_TRUE(cut.wait());  // the first could continue now
    Event ended;
    const auto second =
        transfer_.downloadFile(url, "", place, nullptr, [&](const DownloadResult&) { ended.set(); });
    EXPECT_NE(first, second);
    ASSERT_TRUE(ended.wait());
    EXPECT_FALSE(server_->requests().at(1).header("Range"));
}

}  // namespace
}  // namespace baseapi
