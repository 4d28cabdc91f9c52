// The operations of the sync folders.

#include "tests/cli/call_rows.h"

namespace quillbox_test::call_sync_folders {
namespace {

using testing::HasSubstr;

const std::vector<Row> syncRows = {
    {"createSyncFolder", "absent", absent, refused},
    {"createSyncFolder", "fresh", "{}", failure(13000400, R"(\"fileName\" is missing or empty)"), "",
     post("syncDir/create")},
    {"createSyncFolder", "full",
     R"({"container":"CONTAINER","fileName":"x","hidden":true,"parentFolder":"root","fileId":"FOLDER"})",
     success + R"("container":"CONTAINER","fileId":"FOLDER","fileName":"known","exist":true,"code":0)", "",
     post("syncDir/create")},
    {"createSyncFolder", "aNewFolder", R"({"fileName":"new","parentFolder":"FOLDER"})",
     success + R"("container":"CONTAINER","fileId":")", R"("fileName":"new","exist":false)",
     post("syncDir/create")},

    {"closeSyncFolder", "absent", absent, refused},
    {"closeSyncFolder", "fresh", "{}", refused},
    {"closeSyncFolder", "withoutContainer", R"({"syncDirId":"FOLDER"})",
     failure(13000404, R"(the folder \"FOLDER\" is no sync folder)"), "", post("syncDir/close")},
    {"closeSyncFolder", "full", R"({"container":"CONTAINER","syncDirId":"FOLDER"})",
     failure(13000404, R"(the folder \"FOLDER\" is no sync folder)"), "", post("syncDir/close")},

    {"getSyncFolderStartCursor", "absent", absent, refused},
    {"getSyncFolderStartCursor", "fresh", "{}", refused},
    {"getSyncFolderStartCursor", "withoutContainer", R"({"fileId":"FOLDER"})", failure(13000404, ""), "",
     post("syncDir/getStartCursor")},
    {"getSyncFolderStartCursor", "full", R"({"container":"CONTAINER","fileId":"FOLDER"})",
     failure(13000404, R"(the folder \"FOLDER\" is no sync folder)"), "", post("syncDir/getStartCursor")},

    {"listChangeSyncFolder", "absent", absent, refused},
    {"listChangeSyncFolder", "fresh", "{}", failure(13000400, R"(\"syncDirId\" is missing or empty)"), "",
     post("syncDir/listChange")},
    {"listChangeSyncFolder", "full",
     R"({"container":"CONTAINER","syncDirId":"FOLDER","deviceId":"1","cursor":"1","pageSize":10})",
     failure(13000404, R"(the folder \"FOLDER\" is no sync folder)"), "", post("syncDir/listChange")},

    {"walkFileSyncFolder", "absent", absent, refused},
    {"walkFileSyncFolder", "fresh", "{}", success + R"("files":[{"id":"FOLDER","fileName":"known")",
     R"("id":"FILE","fileName":"known.txt")", post("file/walkFile")},
    {"walkFileSyncFolder", "full",
     R"({"containerId":"CONTAINER","parentFileId":"root","type":"file","includeHidden":true,)"
     R"("pageInfo":{"pageSize":10,"pageCursor":""},"sortInfo":{"sortType":1,"sortDirection":0}})",
     success + R"("files":[{"id":"FILE","fileName":"known.txt")", R"("size":5)", post("file/walkFile")},
    {"walkFileSyncFolder", "unknownFolder", R"({"parentFileId":"none"})", failure(13000404, ""), "",
     post("file/walkFile")},
};

INSTANTIATE_TEST_SUITE_P(OfSyncFolders, CallRow, testing::ValuesIn(syncRows), nameOf);

using CallSyncFoldersTest = CallServiceTest;

TEST_F(CallSyncFoldersTest, EveryOperationHasItsRows) {
    EXPECT_EQ(operationsIn(syncRows), operationsOf({"IFolderSync"}));
}

TEST_F(CallSyncFoldersTest, AFolderIsOpenedReadAndClosed) {
    EXPECT_EQ(call("createSyncFolder", R"({"fileId":"FOLDER"})").status, 0);
    const auto cursor =
        valueOf(call("getSyncFolderStartCursor", R"({"fileId":"FOLDER"})").output, "startCursor");
    EXPECT_EQ(call("createDirectory", R"({"fileName":"new","parentFolder":["FOLDER"]})").status, 0);
    const auto changes =
        call("listChangeSyncFolder", R"({"syncDirId":"FOLDER","cursor":")" + cursor + "\"}").output;
    EXPECT_THAT(changes,
                HasSubstr(R"("hasMore":false,"fileChangeList":[{"changeType":"create","fileInfo":{)"));
    EXPECT_THAT(changes, HasSubstr(R"("fileName":"new")"));
    const auto closed = call("closeSyncFolder", R"({"syncDirId":"FOLDER"})");
    EXPECT_THAT(closed.output, HasSubstr(filled(success + R"("syncDirId":"FOLDER")")));
}

}  // namespace
}  // namespace quillbox_test::call_sync_folders
