#include "baseapi/api/album/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

TEST(AlbumRecords, AlbumsAreTheirWireTexts) {
    expectFullText<CreateAlbumReq>(
        R"({"name":"a","type":"b","scopeDir":["c","d"],"scopeParentFolderId":"e","scopeKind":"f",)"
        R"("groupId":"g","albumKind":"h","shareFolderId":1,"containerId":"i"})");
    expectFullText<CreateAlbumResp>(R"({"albumId":"a","code":1,"msg":"b","httpCode":2})");
    expectFullText<UpdateAlbumReq>(
        R"({"scopeParentFolderId":"a","scopeDirList":["b","c"],"scopeKind":1,"cover_image_url":"d",)"
        R"("name":"e"})");
    expectFullText<UpdateAlbumReqEx>(R"({"req":{"scopeParentFolderId":"x"},"albumId":"a"})");
    expectFullText<DeleteAlbumReq>(R"({"albumId":"a"})");
    expectFullText<GetAlbumListReq>(
        R"({"userId":"a","albumKind":1,"albumType":2,"groupId":"b","pageSize":3,"pageNum":4})");
    expectFullText<AlbumItem>(
        R"({"id":"a","name":"b","coverImg":"c","albumType":1,"albumKind":2,"scopeDir":["d","e"],)"
        R"("scopeKind":"f","scopeParentFolderId":"g","createTime":"h","updateTime":"i"})");
    expectFullText<ListAlbumsResp>(
        R"({"nextPageCursor":"a","total":1,"albumList":[{"id":"x"}],"code":2,"msg":"b","httpCode":3})");
}

TEST(AlbumRecords, TheirContentIsItsWireText) {
    expectFullText<AlbumContent>(
        R"({"id":"a","takeTime":"b","ownerId":"c","fileName":"d","mimeType":"e","fileType":"f",)"
        R"("fileSuffix":"g","parentFolder":["h","i"],"containers":["j","k"],"createdTime":"l",)"
        R"("editedTime":"m","recycled":"n","contentUrl":"o","thumbnailUrl":"p","favorite":"q"})");
    expectFullText<GetAlbumFileListReq>(
        R"({"albumId":"a","pageSize":1,"pageCursor":"b","sortType":2,"sortDirection":3})");
    expectFullText<ListAlbumContentResp>(
        R"({"nextPageCursor":"a","total":1,"contentList":[{"id":"x","favorite":"1"}],"code":2,)"
        R"("msg":"b","httpCode":3})");
    expectFullText<FileMap>(R"({"fileId":"a","ownerId":"b"})");
    expectFullText<BatchAddContent2AlbumReq>(R"({"fileIds":[{"fileId":"x"}]})");
    expectFullText<BatchAddContent2AlbumReqEx>(R"({"albumId":"a","req":{"fileIds":[]}})");
    expectFullText<DeleteAlbumContentReq>(R"({"req":{"id":"x","favorite":"1"},"albumId":"a"})");
    expectFullText<DeleteAlbumContent>(R"({"ids":["a","b"]})");
}

TEST(AlbumRecords, TheirDefaultsGoOut) {
    EXPECT_EQ(encode(GetAlbumListReq{}), R"({"pageSize":100})");
    EXPECT_EQ(encode(GetAlbumFileListReq{}), R"({"pageSize":100})");
    expectFailure<GetAlbumListReq>("{}", Kind::keyNotFound, "");
    expectFailure<GetAlbumFileListReq>(R"({"pageSize":null})", Kind::valueNotFound, "pageSize");
}

TEST(AlbumRecords, TellTheSameThingInDifferentTypes) {
    expectFailure<CreateAlbumReq>(R"({"albumKind":1})", Kind::typeMismatch, "albumKind");
    expectFailure<CreateAlbumReq>(R"({"scopeKind":1})", Kind::typeMismatch, "scopeKind");
    expectFailure<CreateAlbumReq>(R"({"type":1})", Kind::typeMismatch, "type");
    expectFailure<GetAlbumListReq>(R"({"pageSize":1,"albumKind":"1"})", Kind::typeMismatch, "albumKind");
    expectFailure<UpdateAlbumReq>(R"({"scopeKind":"1"})", Kind::typeMismatch, "scopeKind");
    expectFailure<AlbumItem>(R"({"albumKind":"1"})", Kind::typeMismatch, "albumKind");
    expectFailure<AlbumItem>(R"({"scopeKind":1})", Kind::typeMismatch, "scopeKind");
    expectFailure<AlbumContent>(R"({"recycled":false})", Kind::typeMismatch, "recycled");
    expectFailure<AlbumContent>(R"({"favorite":true})", Kind::typeMismatch, "favorite");
}

TEST(AlbumRecords, AWrongTypeAnywhereFailsTheAnswer) {
    expectFailure<CreateAlbumResp>(R"({"albumId":1})", Kind::typeMismatch, "albumId");
    expectFailure<ListAlbumsResp>(R"({"albumList":[{},{"scopeDir":["f",1]}]})", Kind::typeMismatch,
                                  "albumList[1].scopeDir[1]");
    expectFailure<ListAlbumContentResp>(R"({"contentList":[{"parentFolder":"p"}]})", Kind::typeMismatch,
                                        "contentList[0].parentFolder");
    expectFailure<ListAlbumContentResp>(R"({"total":"1"})", Kind::typeMismatch, "total");
}

}  // namespace
}  // namespace baseapi
