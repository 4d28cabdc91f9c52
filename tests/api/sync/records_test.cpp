#include "baseapi/api/sync/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

/// A `File` as it is written: what cannot be absent goes out.
const std::string changedFile =
    R"({"id":"x","favorite":false,"hidden":false,"recycled":false,"version":0,"editedByMe":false,)"
    R"("hasShared":false,"ownedByMe":false,"viewersHasCopyContentPermission":false,)"
    R"("writerHasCopyPermission":false,"writersHasSharePermission":false,"size":0})";

TEST(SyncRecords, FoldersAreTheirWireTexts) {
    expectFullText<CreateSyncDirReq>(
        R"({"container":"a","fileName":"b","hidden":true,"parentFolder":"c","fileId":"d"})");
    expectFullText<CreateSyncDirResp>(
        R"({"container":"a","fileId":"b","fileName":"c","exist":true,"code":1,"msg":"d","httpCode":2})");
    expectFullText<CloseSyncDirReq>(R"({"container":"a","syncDirId":"b"})");
    expectFullText<CloseSyncDirResp>(R"({"syncDirId":"a","code":1,"msg":"b","httpCode":2})");
}

TEST(SyncRecords, ChangesAreTheirWireTexts) {
    expectFullText<GetStartCursorReq>(R"({"container":"a","fileId":"b"})");
    expectFullText<GetStartCursorResp>(R"({"startCursor":"a","code":1,"msg":"b","httpCode":2})");
    expectFullText<ListChangeReq>(
        R"({"container":"a","syncDirId":"b","deviceId":"c","cursor":"d","pageSize":1})");
    expectFullText<FileChangeExtInfo>(
        R"({"moveType":1,"srcParentFileId":"a","idPath":"b","localOperatedAt":9007199254740993})");
    expectFullText<FileChangeInfo>(R"({"policy":"a","changeType":"b","deviceId":"c","fileInfo":)" +
                                   changedFile + R"(,"extInfo":{"moveType":1}})");
    expectFullText<ListChangeResp>(
        R"({"nextCursor":"a","hasMore":true,"fileChangeList":[{"policy":"x"}],"code":1,"msg":"b","httpCode":2})");
}

TEST(SyncRecords, AWalkIsItsWireText) {
    expectFullText<WalkFileReq>(
        R"({"containerId":"a","parentFileId":"b","type":"c","includeHidden":true,)"
        R"("pageInfo":{"pageSize":1,"pageCursor":"d"},"sortInfo":{"sortType":2,"sortDirection":3}})");
    expectFullText<WalkFileResp>(R"({"files":[)" + changedFile +
                                 R"(],"nextCursor":"a","code":1,"msg":"b","httpCode":2})");
}

TEST(SyncRecords, TheirDefaultsGoOut) {
    EXPECT_EQ(encode(CreateSyncDirReq{}), R"({"hidden":false})");
    EXPECT_EQ(encode(WalkFileReq{}), R"({"includeHidden":false})");
    EXPECT_EQ(encode(ListChangeReq{}), "{}");
    expectFailure<CreateSyncDirReq>("{}", Kind::keyNotFound, "");
    expectFailure<CreateSyncDirReq>(R"({"hidden":null})", Kind::valueNotFound, "hidden");
    expectFailure<WalkFileReq>("{}", Kind::keyNotFound, "");
    expectFailure<WalkFileReq>(R"({"includeHidden":null})", Kind::valueNotFound, "includeHidden");
    expectFailure<WalkFileReq>(R"({"includeHidden":true,"pageInfo":{}})", Kind::keyNotFound, "pageInfo");
}

TEST(SyncRecords, APageOfChangesTellsWhetherThereAreMore) {
    EXPECT_FALSE(decoded<ListChangeResp>(R"({"hasMore":false})").hasMore);
    EXPECT_TRUE(decoded<ListChangeResp>(R"({"hasMore":true})").hasMore);
    expectFailure<ListChangeResp>(R"({"nextCursor":"c","fileChangeList":[],"code":0})", Kind::keyNotFound,
                                  "");
    expectFailure<ListChangeResp>(R"({"hasMore":null})", Kind::valueNotFound, "hasMore");
    expectFailure<ListChangeResp>(R"({"hasMore":1})", Kind::typeMismatch, "hasMore");
}

TEST(SyncRecords, AChangedFileMayBeSparse) {
    const auto page = decoded<ListChangeResp>(R"({"hasMore":false,"fileChangeList":[{"fileInfo":{}}]})");
    ASSERT_EQ(page.fileChangeList.value().size(), 1U);
    EXPECT_EQ(page.fileChangeList->front().fileInfo, File{});
    EXPECT_EQ(decoded<WalkFileResp>(R"({"files":[{}]})").files, std::vector<File>{File{}});
}

TEST(SyncRecords, AWrongTypeAnywhereFailsTheAnswer) {
    expectFailure<CreateSyncDirResp>(R"({"exist":"true"})", Kind::typeMismatch, "exist");
    expectFailure<CloseSyncDirResp>(R"({"syncDirId":7})", Kind::typeMismatch, "syncDirId");
    expectFailure<GetStartCursorResp>(R"({"startCursor":7})", Kind::typeMismatch, "startCursor");
    expectFailure<ListChangeResp>(R"({"hasMore":false,"fileChangeList":[{},{"changeType":1}]})",
                                  Kind::typeMismatch, "fileChangeList[1].changeType");
    expectFailure<ListChangeResp>(R"({"hasMore":false,"fileChangeList":[{"fileInfo":{"size":"12"}}]})",
                                  Kind::typeMismatch, "fileChangeList[0].fileInfo.size");
    expectFailure<ListChangeResp>(
        R"({"hasMore":false,"fileChangeList":[{"extInfo":{"localOperatedAt":"12"}}]})", Kind::typeMismatch,
        "fileChangeList[0].extInfo.localOperatedAt");
    expectFailure<WalkFileResp>(R"({"files":[{"parentFolder":"p"}]})", Kind::typeMismatch,
                                "files[0].parentFolder");
}

}  // namespace
}  // namespace baseapi
