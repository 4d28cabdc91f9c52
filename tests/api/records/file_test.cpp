#include "baseapi/api/records/file.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

CapabilitiesEx fullCapabilitiesEx() {
    CapabilitiesEx all;
    CapabilitiesEx::fields([&](std::string_view, auto member) { all.*member = true; });
    return all;
}

TEST(FileRecords, FileIsItsWireText) {
    File record;
    record.category = "category-1";
    record.id = "id-1";
    record.fileName = "fileName-1";
    record.fileType = "fileType-1";
    record.mimeType = "mimeType-1";
    record.description = "description-1";
    record.favorite = true;
    record.hidden = true;
    record.recycled = true;
    record.directlyRecycled = "directlyRecycled-1";
    record.recyclingUser = User{.category = "category-1"};
    record.recycledTime = "recycledTime-1";
    record.parentFolder = std::vector<std::string>{"a", "b"};
    record.properties = AnyMap{{{"a", JSONValue{nullptr}}, {"b", JSONValue{std::int64_t{2}}}}};
    record.appSettings = AnyMap{{{"a", JSONValue{nullptr}}, {"b", JSONValue{std::int64_t{2}}}}};
    record.containers = std::vector<std::string>{"a", "b"};
    record.version = 11;
    record.createdTime = "createdTime-1";
    record.editedTime = "editedTime-1";
    record.editedByMeTime = "editedByMeTime-1";
    record.editedByMe = true;
    record.sharedWithMeTime = "sharedWithMeTime-1";
    record.sharer = User{.category = "category-1"};
    record.owners = std::vector<User>{User{.category = "category-1"}};
    record.lastEditor = User{.category = "category-1"};
    record.hasShared = true;
    record.ownedByMe = true;
    record.capabilities = fullCapabilitiesEx();
    record.viewersHasCopyContentPermission = true;
    record.writerHasCopyPermission = true;
    record.writersHasSharePermission = true;
    record.originalFilename = "originalFilename-1";
    record.fullFileSuffix = "fullFileSuffix-1";
    record.fileSuffix = "fileSuffix-1";
    record.size = 5368709120;
    record.sha256 = "sha256-1";
    record.lastHistoryVersionId = "lastHistoryVersionId-1";
    record.attachments = std::vector<Attachment>{Attachment{{}, "assetId-1"}};
    record.iconDownloadLink = "iconDownloadLink-1";
    record.existThumbnail = "existThumbnail-1";
    record.privateKey = "privateKey-1";
    record.signedDownloadLink = "signedDownloadLink-1";
    record.downloadLinks = std::vector<DownloadLink>{DownloadLink{.usage = "usage-1"}};
    record.localPath = "localPath-1";
    record.sortName = "sortName-1";
    record.userProperties = PrivateProperties{
        .attributes = AnyMap{{{"a", JSONValue{nullptr}}, {"b", JSONValue{std::int64_t{2}}}}}};
    record.creatingUser = "creatingUser-1";
    expectWireText(
        record,
        R"({"category":"category-1","id":"id-1","fileName":"fileName-1","fileType":"fileType-1",)"
        R"("mimeType":"mimeType-1","description":"description-1","favorite":true,"hidden":true,)"
        R"("recycled":true,"directlyRecycled":"directlyRecycled-1",)"
        R"("recyclingUser":{"category":"category-1"},"recycledTime":"recycledTime-1",)"
        R"("parentFolder":["a","b"],"properties":{"a":null,"b":2},"appSettings":{"a":null,"b":2},)"
        R"("containers":["a","b"],"version":11,"createdTime":"createdTime-1",)"
        R"("editedTime":"editedTime-1","editedByMeTime":"editedByMeTime-1","editedByMe":true,)"
        R"("sharedWithMeTime":"sharedWithMeTime-1","sharer":{"category":"category-1"},)"
        R"("owners":[{"category":"category-1"}],"lastEditor":{"category":"category-1"},)"
        R"("hasShared":true,"ownedByMe":true,)"
        R"("capabilities":{"writerHasChangeCopyPermission":true,"commentPermission":true,"readHistoryVersionPermission":true,"recyclePermission":true,"unrecyclePermission":true,"addChildNodePermission":true,"copyPermission":true,"deletePermission":true,"downloadPermission":true,"editPermission":true,"listChildNodePermission":true,"removeChildNodePermission":true,"renameFilePermission":true,"shareFilePermission":true,"uploadPermission":true,"viewPermission":true},)"
        R"("viewersHasCopyContentPermission":true,"writerHasCopyPermission":true,)"
        R"("writersHasSharePermission":true,"originalFilename":"originalFilename-1",)"
        R"("fullFileSuffix":"fullFileSuffix-1","fileSuffix":"fileSuffix-1","size":5368709120,)"
        R"("sha256":"sha256-1","lastHistoryVersionId":"lastHistoryVersionId-1",)"
        R"("attachments":[{"assetId":"assetId-1"}],"iconDownloadLink":"iconDownloadLink-1",)"
        R"("existThumbnail":"existThumbnail-1","privateKey":"privateKey-1",)"
        R"("signedDownloadLink":"signedDownloadLink-1","downloadLinks":[{"usage":"usage-1"}],)"
        R"("localPath":"localPath-1","sortName":"sortName-1",)"
        R"("userProperties":{"attributes":{"a":null,"b":2}},"creatingUser":"creatingUser-1"})");
}

TEST(FileRecords, ASparseFileTakesTheDefaultsAndWritesThem) {
    const auto file = decoded<File>("{}");
    EXPECT_FALSE(file.favorite);
    EXPECT_EQ(file.size, 0);
    EXPECT_EQ(encode(file),
              R"({"favorite":false,"hidden":false,"recycled":false,"version":0,"editedByMe":false,)"
              R"("hasShared":false,"ownedByMe":false,"viewersHasCopyContentPermission":false,)"
              R"("writerHasCopyPermission":false,"writersHasSharePermission":false,"size":0})");
}

TEST(FileRecords, ANullInAFileGivesTheDefault) {
    const auto file = decoded<File>(R"({"favorite":null,"size":null,"owners":null})");
    EXPECT_FALSE(file.favorite);
    EXPECT_EQ(file.size, 0);
    EXPECT_FALSE(file.owners);
}

TEST(FileRecords, AWrongTypeStillFailsAFile) {
    expectFailure<File>(R"({"size":"1"})", DecodingError::Kind::typeMismatch, "size");
    expectFailure<File>(R"({"directlyRecycled":true})", DecodingError::Kind::typeMismatch,
                        "directlyRecycled");
}

TEST(FileRecords, CapabilitiesThatLackAKeyFailAFile) {
    expectFailure<File>(R"({"capabilities":{"copyPermission":true}})", DecodingError::Kind::keyNotFound,
                        "capabilities");
}

TEST(FileRecords, ACopySharesNestedRecordsArraysAndMaps) {
    File file;
    file.fileName = "a";
    file.owners = std::vector<User>{User{.userId = "u"}};
    file.sharer = User{.userId = "u"};
    file.properties = AnyMap{};

    File copy = file.copy();
    EXPECT_TRUE(copy == file);
    copy.owners->front().userId = "v";
    copy.sharer->userId = "v";
    copy.properties->values["k"] = JSONValue{true};
    EXPECT_EQ(file.owners->front().userId, "v");
    EXPECT_EQ(file.sharer->userId, "v");
    EXPECT_EQ(file.properties->values.size(), 1U);

    copy.fileName = "b";
    copy.owners = std::vector<User>{};
    EXPECT_EQ(file.fileName, "a");
    EXPECT_EQ(file.owners->size(), 1U);
}

}  // namespace
}  // namespace baseapi
