#include "baseapi/api/files/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(FilesRecords, GetAccessFilesBeanIsItsWireText) {
    GetAccessFilesBean record;
    record.imageProcess = "imageProcess-1";
    expectWireText(record, R"({"imageProcess":"imageProcess-1"})");
}

TEST(FilesRecords, AccessiFileInfoIsItsWireText) {
    AccessiFileInfo record;
    record.id = "id-1";
    record.containerId = "containerId-1";
    record.containerName = "containerName-1";
    record.containerType = 11;
    record.teamId = "teamId-1";
    record.name = "name-1";
    record.collaborator = "collaborator-1";
    record.collaboratorId = "collaboratorId-1";
    record.collaborateTime = "collaborateTime-1";
    record.collaborateType = 12;
    record.fileType = "fileType-1";
    record.favorite = true;
    record.fileSuffix = "fileSuffix-1";
    record.mimeType = "mimeType-1";
    record.downloadLinks = std::vector<DownloadLink>{DownloadLink{.usage = "usage-1"}};
    record.userCapabilities = UserCapabilities{.addChildNodePermission = true};
    expectWireText(
        record,
        R"({"id":"id-1","containerId":"containerId-1","containerName":"containerName-1",)"
        R"("containerType":11,"teamId":"teamId-1","name":"name-1","collaborator":"collaborator-1",)"
        R"("collaboratorId":"collaboratorId-1","collaborateTime":"collaborateTime-1",)"
        R"("collaborateType":12,"fileType":"fileType-1","favorite":true,)"
        R"("fileSuffix":"fileSuffix-1","mimeType":"mimeType-1",)"
        R"("downloadLinks":[{"usage":"usage-1"}],"userCapabilities":{"addChildNodePermission":true}})");
}

TEST(FilesRecords, RecentlyAccessIsItsWireText) {
    RecentlyAccess record;
    record.operateTime = "operateTime-1";
    record.operateType = 11;
    record.file = AccessiFileInfo{.id = "id-1"};
    record.status = 12;
    expectWireText(record,
                   R"({"operateTime":"operateTime-1","operateType":11,"file":{"id":"id-1"},"status":12})");
}

TEST(FilesRecords, GetAccessResponseIsItsWireText) {
    GetAccessResponse record;
    record.list = std::vector<RecentlyAccess>{RecentlyAccess{.operateTime = "operateTime-1"}};
    record.code = 11;
    record.msg = "msg-1";
    record.httpCode = 12;
    expectWireText(record,
                   R"({"list":[{"operateTime":"operateTime-1"}],"code":11,"msg":"msg-1","httpCode":12})");
}

TEST(FilesRecords, SmartFolderAttrIsItsWireText) {
    SmartFolderAttr record;
    record.name = "name-1";
    record.type = 11;
    record.sort = 12;
    record.value = "value-1";
    expectWireText(record, R"({"name":"name-1","type":11,"sort":12,"value":"value-1"})");
}

TEST(FilesRecords, CreateDirectoryBeanIsItsWireText) {
    CreateDirectoryBean record;
    record.createdTime = "createdTime-1";
    record.description = "description-1";
    record.mimeType = "mimeType-1";
    record.editedTime = "editedTime-1";
    record.fileName = "fileName-1";
    record.fileType = "fileType-1";
    record.parentFolder = std::vector<std::string>{"a", "b"};
    record.containerId = "containerId-1";
    record.renameMode = 11;
    record.hidden = true;
    record.smartFolderAttr = std::vector<SmartFolderAttr>{SmartFolderAttr{.name = "name-1"}};
    record.scene = "scene-1";
    expectWireText(record,
                   R"({"createdTime":"createdTime-1","description":"description-1","mimeType":"mimeType-1",)"
                   R"("editedTime":"editedTime-1","fileName":"fileName-1","fileType":"fileType-1",)"
                   R"("parentFolder":["a","b"],"containerId":"containerId-1","renameMode":11,"hidden":true,)"
                   R"("smartFolderAttr":[{"name":"name-1"}],"scene":"scene-1"})");
}

TEST(FilesRecords, CreateDirectoryResponseIsItsWireText) {
    CreateDirectoryResponse record;
    record.id = "id-1";
    record.fileName = "fileName-1";
    record.mimeType = "mimeType-1";
    record.existFileId = "existFileId-1";
    record.code = 11;
    record.msg = "msg-1";
    record.httpCode = 12;
    expectWireText(record, R"({"id":"id-1","fileName":"fileName-1","mimeType":"mimeType-1",)"
                           R"("existFileId":"existFileId-1","code":11,"msg":"msg-1","httpCode":12})");
}

TEST(FilesRecords, FilesCompleteBeanIsItsWireText) {
    FilesCompleteBean record;
    record.fileId = "fileId-1";
    record.sha256 = "sha256-1";
    expectWireText(record, R"({"fileId":"fileId-1","sha256":"sha256-1"})");
}

TEST(FilesRecords, FilesRenameBeanIsItsWireText) {
    FilesRenameBean record;
    record.fileId = "fileId-1";
    record.containerId = "containerId-1";
    record.name = "name-1";
    record.renameMode = 11;
    expectWireText(record,
                   R"({"fileId":"fileId-1","containerId":"containerId-1","name":"name-1","renameMode":11})");
}

TEST(FilesRecords, FilesSearchBeanIsItsWireText) {
    FilesSearchBean record;
    record.searchType = "searchType-1";
    record.pageInfo = PageInfo{.pageSize = 11};
    record.filter = Filter{.keyWord = "keyWord-1"};
    record.sortInfo = SortInfo{.sortType = "sortType-1"};
    record.recycled = true;
    record.recursived = true;
    record.imageProcess = "imageProcess-1";
    expectWireText(
        record, R"({"searchType":"searchType-1","pageInfo":{"pageSize":11},"filter":{"keyWord":"keyWord-1"},)"
                R"("sortInfo":{"sortType":"sortType-1"},"recycled":true,"recursived":true,)"
                R"("imageProcess":"imageProcess-1"})");
}

TEST(FilesRecords, FileSearchResponseIsItsWireText) {
    FileSearchResponse record;
    record.files = std::vector<FileBean>{FileBean{{}, "updateTime-1"}};
    record.total = 11;
    record.nextPageCursor = "nextPageCursor-1";
    record.code = 12;
    record.msg = "msg-1";
    record.httpCode = 13;
    expectWireText(
        record, R"({"files":[{"updateTime":"updateTime-1"}],"total":11,"nextPageCursor":"nextPageCursor-1",)"
                R"("code":12,"msg":"msg-1","httpCode":13})");
}

TEST(FilesRecords, FilesListBeanIsItsWireText) {
    FilesListBean record;
    record.type = "type-1";
    record.pageInfo = PageInfo{.pageSize = 11};
    record.sortInfo = FileSortInfo{.sortType = 12};
    record.containerId = "containerId-1";
    record.parentFileId = "parentFileId-1";
    record.fileType = "fileType-1";
    record.hidden = true;
    record.imageProcess = "imageProcess-1";
    expectWireText(record,
                   R"({"type":"type-1","pageInfo":{"pageSize":11},"sortInfo":{"sortType":12},)"
                   R"("containerId":"containerId-1","parentFileId":"parentFileId-1","fileType":"fileType-1",)"
                   R"("hidden":true,"imageProcess":"imageProcess-1"})");
}

TEST(FilesRecords, FilesListResponseIsItsWireText) {
    FilesListResponse record;
    record.files = std::vector<FileListMetadata>{FileListMetadata{{}, "recycledTime-1"}};
    record.category = "category-1";
    record.nextCursor = "nextCursor-1";
    record.searchCompleted = true;
    record.code = 11;
    record.msg = "msg-1";
    record.httpCode = 12;
    expectWireText(
        record,
        R"({"files":[{"recycledTime":"recycledTime-1"}],"category":"category-1",)"
        R"("nextCursor":"nextCursor-1","searchCompleted":true,"code":11,"msg":"msg-1","httpCode":12})");
}

TEST(FilesRecords, FilesPathBeanIsItsWireText) {
    FilesPathBean record;
    record.fileId = "fileId-1";
    record.containerId = "containerId-1";
    expectWireText(record, R"({"fileId":"fileId-1","containerId":"containerId-1"})");
}

TEST(FilesRecords, FilesPathResponseIsItsWireText) {
    FilesPathResponse record;
    record.fileIdPath = "fileIdPath-1";
    record.namePath = "namePath-1";
    record.code = 11;
    record.msg = "msg-1";
    record.httpCode = 12;
    expectWireText(record, R"({"fileIdPath":"fileIdPath-1","namePath":"namePath-1","code":11,"msg":"msg-1",)"
                           R"("httpCode":12})");
}

TEST(FilesRecords, FilesStatsDirBeanIsItsWireText) {
    FilesStatsDirBean record;
    record.fileId = "fileId-1";
    record.containerId = "containerId-1";
    record.recursive = true;
    expectWireText(record, R"({"fileId":"fileId-1","containerId":"containerId-1","recursive":true})");
}

TEST(FilesRecords, StatsDataIsItsWireText) {
    StatsData record;
    record.totalSize = "totalSize-1";
    record.subDirCount = "subDirCount-1";
    record.subFileCount = "subFileCount-1";
    expectWireText(
        record,
        R"({"totalSize":"totalSize-1","subDirCount":"subDirCount-1","subFileCount":"subFileCount-1"})");
}

TEST(FilesRecords, FilesStatsDirResponseIsItsWireText) {
    FilesStatsDirResponse record;
    record.data = StatsData{.totalSize = "totalSize-1"};
    record.code = 11;
    record.msg = "msg-1";
    record.httpCode = 12;
    expectWireText(record, R"({"data":{"totalSize":"totalSize-1"},"code":11,"msg":"msg-1","httpCode":12})");
}

TEST(FilesRecords, GetDownloadUrlBeanIsItsWireText) {
    GetDownloadUrlBean record;
    record.containerId = "containerId-1";
    record.fileIds = std::vector<std::string>{"a", "b"};
    expectWireText(record, R"({"containerId":"containerId-1","fileIds":["a","b"]})");
}

TEST(FilesRecords, DownloadInfoResponseIsItsWireText) {
    DownloadInfoResponse record;
    record.fileId = "fileId-1";
    record.fileName = "fileName-1";
    record.url = "url-1";
    record.code = "code-1";
    record.msg = "msg-1";
    expectWireText(
        record,
        R"({"fileId":"fileId-1","fileName":"fileName-1","url":"url-1","code":"code-1","msg":"msg-1"})");
}

TEST(FilesRecords, GetDownloadUrlResponseIsItsWireText) {
    GetDownloadUrlResponse record;
    record.batchCode = 11;
    record.downloads = std::vector<DownloadInfoResponse>{DownloadInfoResponse{.fileId = "fileId-1"}};
    record.code = 12;
    record.msg = "msg-1";
    record.httpCode = 13;
    expectWireText(
        record,
        R"({"batchCode":11,"downloads":[{"fileId":"fileId-1"}],"code":12,"msg":"msg-1","httpCode":13})");
}

TEST(FilesRecords, GetFileDetailBeanIsItsWireText) {
    GetFileDetailBean record;
    record.fileId = "fileId-1";
    record.containerId = "containerId-1";
    record.imageProcess = "imageProcess-1";
    expectWireText(record,
                   R"({"fileId":"fileId-1","containerId":"containerId-1","imageProcess":"imageProcess-1"})");
}

TEST(FilesRecords, GetFileDetailResponseIsItsWireText) {
    GetFileDetailResponse record;
    record.id = "id-1";
    record.fileName = "fileName-1";
    record.fileType = "fileType-1";
    record.mimeType = "mimeType-1";
    record.recycled = true;
    record.parentFolder = std::vector<std::string>{"a", "b"};
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    record.containers = std::vector<std::string>{"a", "b"};
    record.createdTime = "createdTime-1";
    record.editedTime = "editedTime-1";
    record.owners = std::vector<User>{User{.category = "category-1"}};
    record.lastEditor = User{.category = "category-1"};
    record.fileSuffix = "fileSuffix-1";
    record.size = 5368709120;
    record.attachments = std::vector<AttachmentMetadata>{AttachmentMetadata{.usage = "usage-1"}};
    record.userCapabilities = UserCapabilities{.addChildNodePermission = true};
    record.sha256 = "sha256-1";
    record.downloadLinks = std::vector<DownloadLink>{DownloadLink{.usage = "usage-1"}};
    record.code = 12;
    record.msg = "msg-1";
    record.httpCode = 13;
    expectWireText(
        record, R"({"id":"id-1","fileName":"fileName-1","fileType":"fileType-1","mimeType":"mimeType-1",)"
                R"("recycled":true,"parentFolder":["a","b"],"properties":{"k":"v"},"containers":["a","b"],)"
                R"("createdTime":"createdTime-1","editedTime":"editedTime-1",)"
                R"("owners":[{"category":"category-1"}],"lastEditor":{"category":"category-1"},)"
                R"("fileSuffix":"fileSuffix-1","size":5368709120,"attachments":[{"usage":"usage-1"}],)"
                R"("userCapabilities":{"addChildNodePermission":true},"sha256":"sha256-1",)"
                R"("downloadLinks":[{"usage":"usage-1"}],"code":12,"msg":"msg-1","httpCode":13})");
}

TEST(FilesRecords, GetUploadUrlBeanIsItsWireText) {
    GetUploadUrlBean record;
    record.fileId = "fileId-1";
    record.multiParts =
        std::vector<MultiPartInfo>{MultiPartInfo{.partNumber = 11, .partSize = 12, .partOffset = 4294967296}};
    expectWireText(record, R"({"fileId":"fileId-1",)"
                           R"("multiParts":[{"partNumber":11,"partSize":12,"partOffset":4294967296}]})");
}

TEST(FilesRecords, GetUploadUrlResponseIsItsWireText) {
    GetUploadUrlResponse record;
    record.multiParts =
        std::vector<MultiPartInfo>{MultiPartInfo{.partNumber = 11, .partSize = 12, .partOffset = 4294967296}};
    record.code = 14;
    record.msg = "msg-1";
    record.httpCode = 15;
    expectWireText(record,
                   R"({"multiParts":[{"partNumber":11,"partSize":12,"partOffset":4294967296}],"code":14,)"
                   R"("msg":"msg-1","httpCode":15})");
}

TEST(FilesRecords, GetFilePreviewUrlBeanIsItsWireText) {
    GetFilePreviewUrlBean record;
    record.fileId = "fileId-1";
    expectWireText(record, R"({"fileId":"fileId-1"})");
}

TEST(FilesRecords, FileRreviewAndEditLinkResponseIsItsWireText) {
    FileRreviewAndEditLinkResponse record;
    record.link = "link-1";
    record.code = 11;
    record.msg = "msg-1";
    record.httpCode = 12;
    expectWireText(record, R"({"link":"link-1","code":11,"msg":"msg-1","httpCode":12})");
}

template <class Response>
class FilesResponses : public testing::Test {};
using Responses =
    testing::Types<GetAccessResponse, CreateDirectoryResponse, FilesCreateResponse, FileSearchResponse,
                   FilesListResponse, FilesPathResponse, FilesStatsDirResponse, GetDownloadUrlResponse,
                   GetFileDetailResponse, GetUploadUrlResponse, FileRreviewAndEditLinkResponse>;
TYPED_TEST_SUITE(FilesResponses, Responses);

TYPED_TEST(FilesResponses, NeedNothingButAnObject) {
    EXPECT_EQ(encode(decoded<TypeParam>("{}")), "{}");
    EXPECT_EQ(encode(decoded<TypeParam>(R"({"code":0,"unknown":[{}]})")), R"({"code":0})");
    expectFailure<TypeParam>("[]", DecodingError::Kind::typeMismatch, "");
    expectFailure<TypeParam>("gateway", DecodingError::Kind::dataCorrupted, "");
}

TEST(FilesRecords, AFreshRecordHasItsDefaults) {
    EXPECT_EQ(FilesCreateBean().uploadType, 1);
    EXPECT_EQ(FilesCreateBean().autoRename, 2);
    EXPECT_EQ(FilesCreateBean().scene, "");
    EXPECT_EQ(CreateDirectoryBean().renameMode, 2);
    EXPECT_EQ(FilesRenameBean().renameMode, 2);
    EXPECT_TRUE(FilesStatsDirBean().recursive);
}

TEST(FilesRecords, TheSceneOfACreateMustBeThere) {
    const std::string rest = R"({"length":0,"uploadType":1,"autoRename":2,"hidden":false)";
    expectFailure<FilesCreateBean>(rest + "}", DecodingError::Kind::keyNotFound, "");
    EXPECT_EQ(decoded<FilesCreateBean>(rest + R"(,"scene":"backup"})").scene, "backup");
}

TEST(FilesRecords, APartInAnAnswerMustBeWhole) {
    expectFailure<FilesCreateResponse>(
        R"({"multiParts":[{"partNumber":1,"partSize":2,"partOffset":0},{"partNumber":2}]})",
        DecodingError::Kind::keyNotFound, "multiParts[1]");
    expectFailure<GetUploadUrlResponse>(R"({"multiParts":[{}]})", DecodingError::Kind::keyNotFound,
                                        "multiParts[0]");
}

TEST(FilesRecords, TheCountsOfAFolderStayTexts) {
    EXPECT_EQ(decoded<FilesStatsDirResponse>(R"({"data":{"totalSize":"007"}})").data->totalSize, "007");
    expectFailure<FilesStatsDirResponse>(R"({"data":{"totalSize":7}})", DecodingError::Kind::typeMismatch,
                                         "data.totalSize");
}

TEST(FilesRecords, ADownloadOfABatchHasACodeOfItsOwn) {
    const auto response = decoded<GetDownloadUrlResponse>(
        R"({"code":0,"batchCode":1,"downloads":[{"fileId":"f","code":"404","msg":"gone"}]})");
    EXPECT_EQ(response.code, 0);
    EXPECT_EQ(response.downloads->front().code, "404");
    expectFailure<GetDownloadUrlResponse>(R"({"downloads":[{"code":404}]})",
                                          DecodingError::Kind::typeMismatch, "downloads[0].code");
}

TEST(FilesRecords, OneFileThatDoesNotDecodeFailsThePage) {
    expectFailure<FilesListResponse>(R"({"files":[{},{"size":"1"}]})", DecodingError::Kind::typeMismatch,
                                     "files[1].size");
    expectFailure<FileSearchResponse>(R"({"files":[{"size":1}]})", DecodingError::Kind::typeMismatch,
                                      "files[0].size");
    expectFailure<GetFileDetailResponse>(R"({"size":"1"})", DecodingError::Kind::typeMismatch, "size");
    expectFailure<GetAccessResponse>(R"({"list":[{"file":{"containerType":"1"}}]})",
                                     DecodingError::Kind::typeMismatch, "list[0].file.containerType");
}

}  // namespace
}  // namespace baseapi
