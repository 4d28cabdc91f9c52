#include "baseapi/api/sharefolder/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

TEST(ShareFolderRecords, AreTheirWireTexts) {
    expectFullText<CreateShareFolderReq>(R"({"shareType":1,"containerId":"a","name":"b"})");
    expectFullText<CreateShareFolderInfo>(
        R"({"tenantId":"a","creator":"b","createTime":"c","groupId":1,"id":"d","shareFolderId":"e"})");
    expectFullText<CreateShareFolderResp>(
        R"({"id":"a","data":{"tenantId":"x"},"code":1,"msg":"b","httpCode":2})");
    expectFullText<RenameShareFolderReq>(R"({"id":"a","fileName":"b"})");
    expectFullText<RenameShareFolderResp>(R"({"id":"a","code":1,"msg":"b","httpCode":2})");
    expectFullText<DeleteShareFolderReq>(R"({"id":"a"})");
    expectFullText<GetShareFolderDetailReq>(R"({"shareFolderId":1})");
    expectFullText<ShareFolder>(
        R"({"tenantId":"a","creator":"b","createTime":"c","ownerId":1,"status":2,"id":"d",)"
        R"("containerId":"e","shareFolderFileId":"f","albumRootFileId":"g","name":"h",)"
        R"("ownerName":"i","groupId":3,"maxMember":4})");
    expectFullText<ShareFolderMetadataResp>(
        R"({"total":1,"shareFolder":{"tenantId":"x"},"code":2,"msg":"a","httpCode":3})");
    expectFullText<ListShareFolderReq>(R"({"offset":1,"limit":2,"keyWord":"a","status":"b","queryType":3})");
    expectFullText<ShareFolderPageResp>(
        R"({"total":1,"folders":[{"tenantId":"x"}],"code":2,"msg":"a","httpCode":3})");
    expectFullText<GetShareFolderAlbumListReq>(R"({"offset":1,"limit":2,"keyWord":"a","shareFolderId":"b"})");
    expectFullText<ShareFolderAlbum>(
        R"({"creator":"a","createTime":"b","modifyTime":"c","status":1,"fileId":"d","name":"e"})");
    expectFullText<ShareFolderAlbumPageResp>(
        R"({"total":1,"folders":[{"creator":"x"}],"code":2,"msg":"a","httpCode":3})");
}

TEST(ShareFolderRecords, NameTheFolderOnceByANumberAndOnceByAText) {
    expectFailure<GetShareFolderDetailReq>(R"({"shareFolderId":"12"})", Kind::typeMismatch, "shareFolderId");
    expectFailure<GetShareFolderAlbumListReq>(R"({"shareFolderId":12})", Kind::typeMismatch, "shareFolderId");
}

TEST(ShareFolderRecords, HoldIdsThatAreLarge) {
    EXPECT_EQ(decoded<ShareFolder>(R"({"ownerId":9007199254740993})").ownerId, 9007199254740993);
    EXPECT_EQ(decoded<CreateShareFolderInfo>(R"({"groupId":9223372036854775807})").groupId, INT64_MAX);
}

TEST(ShareFolderRecords, AWrongTypeAnywhereFailsTheAnswer) {
    expectFailure<CreateShareFolderResp>(R"({"data":{"groupId":"1"}})", Kind::typeMismatch, "data.groupId");
    expectFailure<RenameShareFolderResp>(R"({"id":1})", Kind::typeMismatch, "id");
    expectFailure<ShareFolderMetadataResp>(R"({"shareFolder":{"ownerId":"7"}})", Kind::typeMismatch,
                                           "shareFolder.ownerId");
    expectFailure<ShareFolderPageResp>(R"({"folders":[{},{"maxMember":true}]})", Kind::typeMismatch,
                                       "folders[1].maxMember");
    expectFailure<ShareFolderAlbumPageResp>(R"({"folders":[{"status":"1"}]})", Kind::typeMismatch,
                                            "folders[0].status");
}

}  // namespace
}  // namespace baseapi
