#include "baseapi/api/files/i_file.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_file {
namespace {

const std::string prefix = "/quillbox/ose/v1/";

Sent get(const std::string& target) {
    return {"GET", prefix + target, absent};
}
Sent post(const std::string& target, std::string body) {
    return {"POST", prefix + target, std::move(body)};
}

const std::string directory =
    R"({"createdTime":"t1","description":"d","mimeType":"m","editedTime":"t2","fileName":"Paintings é","fileType":"1",)"
    R"("parentFolder":["p"],"containerId":"c","renameMode":3,"hidden":true,)"
    R"("smartFolderAttr":[{"name":"n","type":1,"sort":2,"value":"v"}],"scene":"s"})";
const std::string complete = R"({"fileId":"f","sha256":"ab"})";
const std::string rename = R"({"fileId":"f1","containerId":"c","name":"new","renameMode":1})";
const std::string create =
    R"({"createdTime":"t1","description":"d","mimeType":"m","fileName":"n","fileType":"1","parentFolder":["p"],)"
    R"("sha256":"ab","length":5368709120,"uploadMode":"u","uploadType":3,"autoRename":4,)"
    R"("multiParts":[{"partNumber":1,"partSize":2,"partOffset":3,"hashCtx":[4,4294967295],"uploadUrl":"http://a/?b=c&d",)"
    R"("partId":"i"}],"containerId":"c","preHash":"h","proofCode":"p","hidden":true,"scene":"backup"})";
const std::string search =
    R"({"searchType":"s","pageInfo":{"pageSize":10,"pageCursor":"c"},"filter":{"keyWord":"k","containerId":"c",)"
    R"("parentFolder":"p","fileType":"f","updateTimeRange":"u","ownerId":"o"},)"
    R"("sortInfo":{"sortType":"1","sortDirection":"2"},"recycled":true,"recursived":true,"imageProcess":"i"})";
const std::string list =
    R"({"type":"x","pageInfo":{"pageSize":10,"pageCursor":"c"},"sortInfo":{"sortType":1,"sortDirection":2},)"
    R"("containerId":"c","parentFileId":"p","fileType":"f","hidden":true,"imageProcess":"i"})";
const std::string download = R"({"containerId":"c","fileIds":["f1","f2"]})";
const std::string detail = R"({"fileId":"f1","containerId":"c","imageProcess":"i"})";
const std::string uploadUrl =
    R"({"fileId":"f","multiParts":[{"partNumber":1,"partSize":2,"partOffset":0},{"partNumber":2,"partSize":2,"partOffset":2}]})";

const std::vector<OperationRow> rows = {
    {"getAccessFiles", "absent", absent, get("access")},
    {"getAccessFiles", "fresh", "{}", get("access")},
    {"getAccessFiles", "full", R"({"imageProcess":"resize,w_100"})", get("access?imageProcess=resize,w_100")},
    {"getAccessFiles", "emptyImageProcess", R"({"imageProcess":""})", get("access?imageProcess=")},

    {"createDirectory", "absent", absent, refused},
    {"createDirectory", "fresh", "{}", post("directory", R"({"renameMode":2,"hidden":false})")},
    {"createDirectory", "full", directory, post("directory", directory)},

    {"fileComplete", "absent", absent, refused},
    {"fileComplete", "fresh", "{}", post("files/complete", "{}")},
    {"fileComplete", "full", complete, post("files/complete", complete)},

    {"fileRename", "absent", absent, refused},
    {"fileRename", "fresh", "{}", refused},
    {"fileRename", "full", rename, post("files/rename/f1", rename)},
    {"fileRename", "withoutFileId", R"({"containerId":"c","name":"new"})", refused},
    {"fileRename", "emptyFileId", R"({"fileId":""})",
     post("files/rename/", R"({"fileId":"","renameMode":2})")},
    {"fileRename", "fileIdAsItIs", R"({"fileId":"a/b%20?c"})",
     post("files/rename/a/b%20?c", R"({"fileId":"a/b%20?c","renameMode":2})")},

    {"filesCreate", "absent", absent, refused},
    {"filesCreate", "fresh", "{}",
     post("files/create", R"({"length":0,"uploadType":1,"autoRename":2,"hidden":false,"scene":""})")},
    {"filesCreate", "full", create, post("files/create", create)},

    {"fileSearch", "absent", absent, refused},
    {"fileSearch", "fresh", "{}", post("files/search", R"({"recycled":false,"recursived":false})")},
    {"fileSearch", "full", search, post("files/search", search)},

    {"filesList", "absent", absent, refused},
    {"filesList", "fresh", "{}", refused},
    {"filesList", "full", list, post("files/x", list)},
    {"filesList", "onlyType", R"({"type":"x"})", post("files/x", R"({"type":"x","hidden":false})")},
    {"filesList", "withoutType", R"({"containerId":"c"})", refused},
    {"filesList", "emptyType", R"({"type":""})", post("files/", R"({"type":"","hidden":false})")},

    {"filesPath", "absent", absent, refused},
    {"filesPath", "fresh", "{}", get("files/path")},
    {"filesPath", "full", R"({"fileId":"f","containerId":"c"})", get("files/path?fileId=f&containerId=c")},
    {"filesPath", "onlyFileId", R"({"fileId":"f"})", get("files/path?fileId=f")},
    {"filesPath", "onlyContainerId", R"({"containerId":"c"})", get("files/path?containerId=c")},
    {"filesPath", "emptyFileId", R"({"fileId":"","containerId":"c"})", get("files/path?containerId=c")},
    {"filesPath", "emptyContainerId", R"({"fileId":"f","containerId":""})", get("files/path?fileId=f")},
    {"filesPath", "bothEmpty", R"({"fileId":"","containerId":""})", get("files/path")},
    {"filesPath", "valuesAsTheyAre", R"({"fileId":"a%20b&c=d"})", get("files/path?fileId=a%20b&c=d")},

    {"filesStatsDir", "absent", absent, refused},
    {"filesStatsDir", "fresh", "{}", get("files/statsDir?recursive=true")},
    {"filesStatsDir", "full", R"({"fileId":"f","containerId":"c","recursive":false})",
     get("files/statsDir?fileId=f&containerId=c&recursive=false")},
    {"filesStatsDir", "onlyContainerId", R"({"fileId":"","containerId":"c"})",
     get("files/statsDir?containerId=c&recursive=true")},
    {"filesStatsDir", "bothEmpty", R"({"fileId":"","containerId":""})", get("files/statsDir?recursive=true")},

    {"getDownloadUrl", "absent", absent, refused},
    {"getDownloadUrl", "fresh", "{}", post("files/download", "{}")},
    {"getDownloadUrl", "full", download, post("files/download", download)},

    {"getFileDetail", "absent", absent, refused},
    {"getFileDetail", "fresh", "{}", refused},
    {"getFileDetail", "full", detail, post("files/f1/detail", detail)},
    {"getFileDetail", "withoutFileId", R"({"containerId":"c"})", refused},
    {"getFileDetail", "emptyFileId", R"({"fileId":""})", post("files//detail", R"({"fileId":""})")},

    {"getUploadUrl", "absent", absent, refused},
    {"getUploadUrl", "fresh", "{}", post("files/multipart/uploadUrl", "{}")},
    {"getUploadUrl", "full", uploadUrl, post("files/multipart/uploadUrl", uploadUrl)},

    {"getFilePreviewUrl", "absent", absent, refused},
    {"getFilePreviewUrl", "full", R"({"fileId":"f1"})", get("files/preview/f1/link")},
    {"getFilePreviewUrl", "emptyFileId", R"({"fileId":""})", get("files/preview//link")},
};

class FileOperation : public OperationTest {};

TEST_P(FileOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getFileImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IFile, FileOperation, testing::ValuesIn(rows), nameOf);

TEST(IFile, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IFile>(),
                testing::ElementsAre("getAccessFiles", "createDirectory", "fileComplete", "fileRename",
                                     "filesCreate", "fileSearch", "filesList", "filesPath", "filesStatsDir",
                                     "getDownloadUrl", "getFileDetail", "getUploadUrl", "getFilePreviewUrl"));
}

TEST(IFile, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getFileImpl(), &CloudInstance::shared().getFileImpl());
}

TEST(IFileDeathTest, APreviewWithoutAFileIdEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(CloudInstance::shared().getFileImpl().getFilePreviewUrl(GetFilePreviewUrlBean{}, nullptr),
                 "fileId");
}

class FileAnswer : public ServiceTest {
  protected:
    IFile& files_ = CloudInstance::shared().getFileImpl();
};

TEST_F(FileAnswer, WithACodeIsASuccess) {
    answer_ = R"({"code": 1})";
    EXPECT_EQ(std::get<std::string>(callOperation(files_, "fileComplete", complete).result), R"({"code":1})");
}

TEST_F(FileAnswer, OfABatchOfDownloadsIsASuccessThoughAFileFailed) {
    answer_ = R"({"code":0,"batchCode":1,"downloads":[{"fileId":"f1","code":"404","msg":"gone"}]})";
    EXPECT_EQ(std::get<std::string>(callOperation(files_, "getDownloadUrl", download).result),
              R"({"batchCode":1,"downloads":[{"fileId":"f1","code":"404","msg":"gone"}],"code":0})");
}

TEST_F(FileAnswer, KeepsTheServicesCodeAndMessage) {
    status_ = 409;
    answer_ = R"({"code":13000405,"msg":"the name is taken"})";
    const auto failure = std::get<NetworkFailure>(callOperation(files_, "createDirectory", directory).result);
    EXPECT_EQ(failure.code, 13000405);
    EXPECT_EQ(failure.message, "the name is taken");
}

TEST_F(FileAnswer, OfAnotherTypeIsAFailureThatNamesThePlace) {
    answer_ = R"({"files":[{"size":"12"}]})";
    const auto failure = std::get<NetworkFailure>(callOperation(files_, "filesList", list).result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_THAT(failure.message, testing::StartsWith("str to bean error "));
    EXPECT_THAT(failure.message, testing::HasSubstr("files[0].size"));
}

TEST_F(FileAnswer, NeverComesForAnAddressThatIsNone) {
    const auto failure =
        std::get<NetworkFailure>(callOperation(files_, "filesPath", R"({"fileId":"a b"})").result);
    EXPECT_EQ(failure.message, "callRequest error: invalidURL");
    EXPECT_EQ(sent(), refused);
}

}  // namespace
}  // namespace baseapi::i_file
