#include "baseapi/api/records/file_bean.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(FileBeanRecords, BaseFileBeanIsItsWireText) {
    BaseFileBean record;
    record.id = "id-1";
    record.fileName = "fileName-1";
    record.fileType = "fileType-1";
    record.mimeType = "mimeType-1";
    record.favorite = true;
    record.recycled = true;
    record.parentFolder = std::vector<std::string>{"a", "b"};
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    record.owners = std::vector<User>{User{.category = "category-1"}};
    record.lastEditor = User{.category = "category-1"};
    record.fileSuffix = "fileSuffix-1";
    record.downloadLinks = std::vector<DownloadLink>{DownloadLink{.usage = "usage-1"}};
    record.sha256 = "sha256-1";
    record.userCapabilities = UserCapabilities{.addChildNodePermission = true};
    record.idPath = "idPath-1";
    expectWireText(record,
                   R"({"id":"id-1","fileName":"fileName-1","fileType":"fileType-1","mimeType":"mimeType-1",)"
                   R"("favorite":true,"recycled":true,"parentFolder":["a","b"],"properties":{"k":"v"},)"
                   R"("owners":[{"category":"category-1"}],"lastEditor":{"category":"category-1"},)"
                   R"("fileSuffix":"fileSuffix-1","downloadLinks":[{"usage":"usage-1"}],"sha256":"sha256-1",)"
                   R"("userCapabilities":{"addChildNodePermission":true},"idPath":"idPath-1"})");
}

TEST(FileBeanRecords, FileListMetadataIsItsWireText) {
    FileListMetadata record;
    record.recycledTime = "recycledTime-1";
    record.containers = std::vector<std::string>{"a", "b"};
    record.createdTime = "createdTime-1";
    record.editedTime = "editedTime-1";
    record.hidden = true;
    record.directlyRecycled = true;
    record.attachments =
        std::vector<FileListAttachment>{FileListAttachment{{}, FileListAsset{.mimeType = "mimeType-1"}}};
    record.userProperties = PrivateProperties{
        .attributes = AnyMap{{{"a", JSONValue{nullptr}}, {"b", JSONValue{std::int64_t{2}}}}}};
    record.size = 5368709120;
    record.id = "id-1";
    record.fileName = "fileName-1";
    record.fileType = "fileType-1";
    record.mimeType = "mimeType-1";
    record.favorite = true;
    record.recycled = true;
    record.parentFolder = std::vector<std::string>{"a", "b"};
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    record.owners = std::vector<User>{User{.category = "category-1"}};
    record.lastEditor = User{.category = "category-1"};
    record.fileSuffix = "fileSuffix-1";
    record.downloadLinks = std::vector<DownloadLink>{DownloadLink{.usage = "usage-1"}};
    record.sha256 = "sha256-1";
    record.userCapabilities = UserCapabilities{.addChildNodePermission = true};
    record.idPath = "idPath-1";
    expectWireText(
        record, R"({"recycledTime":"recycledTime-1","containers":["a","b"],"createdTime":"createdTime-1",)"
                R"("editedTime":"editedTime-1","hidden":true,"directlyRecycled":true,)"
                R"("attachments":[{"asset":{"mimeType":"mimeType-1"}}],)"
                R"("userProperties":{"attributes":{"a":null,"b":2}},"size":5368709120,"id":"id-1",)"
                R"("fileName":"fileName-1","fileType":"fileType-1","mimeType":"mimeType-1","favorite":true,)"
                R"("recycled":true,"parentFolder":["a","b"],"properties":{"k":"v"},)"
                R"("owners":[{"category":"category-1"}],"lastEditor":{"category":"category-1"},)"
                R"("fileSuffix":"fileSuffix-1","downloadLinks":[{"usage":"usage-1"}],"sha256":"sha256-1",)"
                R"("userCapabilities":{"addChildNodePermission":true},"idPath":"idPath-1"})");
}

TEST(FileBeanRecords, FileBeanIsItsWireText) {
    FileBean record;
    record.updateTime = "updateTime-1";
    record.namePath = "namePath-1";
    record.teamName = "teamName-1";
    record.teamId = "teamId-1";
    record.containerId = "containerId-1";
    record.containerType = "containerType-1";
    record.owner = "owner-1";
    record.createdTime = "createdTime-1";
    record.editedTime = "editedTime-1";
    record.ownerId = "ownerId-1";
    record.size = "1048576";
    record.attachments = std::vector<Attachment>{Attachment{{}, "assetId-1"}};
    record.userProperties =
        FileListPrivateProperties{.properties = std::map<std::string, std::string>{{"k", "v"}}};
    record.id = "id-1";
    record.fileName = "fileName-1";
    record.fileType = "fileType-1";
    record.mimeType = "mimeType-1";
    record.favorite = true;
    record.recycled = true;
    record.parentFolder = std::vector<std::string>{"a", "b"};
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    record.owners = std::vector<User>{User{.category = "category-1"}};
    record.lastEditor = User{.category = "category-1"};
    record.fileSuffix = "fileSuffix-1";
    record.downloadLinks = std::vector<DownloadLink>{DownloadLink{.usage = "usage-1"}};
    record.sha256 = "sha256-1";
    record.userCapabilities = UserCapabilities{.addChildNodePermission = true};
    record.idPath = "idPath-1";
    expectWireText(record,
                   R"({"updateTime":"updateTime-1","namePath":"namePath-1","teamName":"teamName-1",)"
                   R"("teamId":"teamId-1","containerId":"containerId-1","containerType":"containerType-1",)"
                   R"("owner":"owner-1","createdTime":"createdTime-1","editedTime":"editedTime-1",)"
                   R"("ownerId":"ownerId-1","size":"1048576","attachments":[{"assetId":"assetId-1"}],)"
                   R"("userProperties":{"properties":{"k":"v"}},"id":"id-1","fileName":"fileName-1",)"
                   R"("fileType":"fileType-1","mimeType":"mimeType-1","favorite":true,"recycled":true,)"
                   R"("parentFolder":["a","b"],"properties":{"k":"v"},"owners":[{"category":"category-1"}],)"
                   R"("lastEditor":{"category":"category-1"},"fileSuffix":"fileSuffix-1",)"
                   R"("downloadLinks":[{"usage":"usage-1"}],"sha256":"sha256-1",)"
                   R"("userCapabilities":{"addChildNodePermission":true},"idPath":"idPath-1"})");
}

TEST(FileBeanRecords, TheSizeIsANumberInAListAndATextInASearch) {
    expectFailure<FileListMetadata>(R"({"size":"12"})", DecodingError::Kind::typeMismatch, "size");
    EXPECT_EQ(decoded<FileListMetadata>(R"({"size":12})").size, 12);
    EXPECT_EQ(decoded<FileBean>(R"({"size":"12"})").size, "12");
    expectFailure<FileBean>(R"({"size":12})", DecodingError::Kind::typeMismatch, "size");
}

TEST(FileBeanRecords, TheBaseReadsNoSize) {
    EXPECT_EQ(encode(decoded<BaseFileBean>(R"({"size":[],"id":"1"})")), R"({"id":"1"})");
}

TEST(FileBeanRecords, DirectlyRecycledIsABoolInAList) {
    EXPECT_EQ(decoded<FileListMetadata>(R"({"directlyRecycled":true})").directlyRecycled, true);
    expectFailure<FileListMetadata>(R"({"directlyRecycled":"true"})", DecodingError::Kind::typeMismatch,
                                    "directlyRecycled");
}

TEST(FileBeanRecords, NothingHasToBeThere) {
    EXPECT_EQ(encode(decoded<FileListMetadata>("{}")), "{}");
    EXPECT_EQ(encode(decoded<FileBean>("{}")), "{}");
}

TEST(FileBeanRecords, AFailureDeepInsideNamesItsPlace) {
    expectFailure<FileBean>(
        R"({"attachments":[{},{"asset":{"resource":{"object":{"images":[{"process":1}]}}}}]})",
        DecodingError::Kind::typeMismatch, "attachments[1].asset.resource.object.images[0].process");
}

}  // namespace
}  // namespace baseapi
