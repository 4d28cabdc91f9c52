// The operations of albums and of share folders, called by the built quillbox at the built local service.

#include "tests/cli/call_rows.h"

namespace quillbox_test::call_albums {
namespace {

/// ALBUM stands for the id of an album "album" that holds FILE, GROUP for that of a share folder "family".
const std::vector<Row> albumRows = {
    {"albumCreate", "absent", absent, refused},
    {"albumCreate", "fresh", "{}", failure(13000400, R"(\"name\" is missing or empty)"), "",
     post("album/create")},
    {"albumCreate", "full",
     R"({"name":"new","type":"1","scopeDir":["FOLDER"],"scopeParentFolderId":"FOLDER","scopeKind":"1",)"
     R"("groupId":"","albumKind":"2","containerId":"CONTAINER"})",
     success + R"("albumId":"2")", "", post("album/create")},
    {"albumCreate", "inAShareFolder", R"({"name":"new","groupId":"GROUP","shareFolderId":1})",
     success + R"("albumId":"2")", "", post("album/create")},
    {"albumCreate", "nameTaken", R"({"name":"album"})", failure(13000405, ""), "", post("album/create")},

    {"albumUpdate", "absent", absent, refused},
    {"albumUpdate", "fresh", "{}", failure(13000404, "there is no endpoint"), "", post("/update")},
    {"albumUpdate", "withoutReq", R"({"albumId":"ALBUM"})",
     failure(13000400, "the body must be a JSON object"), "", post("ALBUM/update")},
    {"albumUpdate", "full",
     R"({"albumId":"ALBUM","req":{"scopeParentFolderId":"FOLDER","scopeDirList":["FOLDER"],"scopeKind":2,)"
     R"("cover_image_url":"http://c","name":"renamed"}})",
     done, "", post("ALBUM/update")},
    {"albumUpdate", "unknown", R"({"albumId":"999","req":{}})",
     failure(13000404, R"(there is no album \"999\")"), "", post("999/update")},

    {"albumDelete", "absent", absent, refused},
    {"albumDelete", "fresh", "{}", failure(13000404, "there is no endpoint"), "",
     "DELETE /quillbox/ose/v1/album/"},
    {"albumDelete", "full", R"({"albumId":"ALBUM"})", done, "", "DELETE /quillbox/ose/v1/album/ALBUM"},
    {"albumDelete", "unknown", R"({"albumId":"999"})", failure(13000404, ""), "",
     "DELETE /quillbox/ose/v1/album/999"},

    {"albumList", "absent", absent, refused},
    {"albumList", "fresh", "{}", success + R"("total":1,"albumList":[{"id":"ALBUM","name":"album",)", "",
     get("album/list?userId=&albumKind=0&albumType=0&pageSize=100&pageNum=0")},
    {"albumList", "full",
     R"({"userId":"","albumKind":1,"albumType":1,"groupId":"","pageSize":10,"pageNum":1})",
     success + R"("total":1,"albumList":[{)", R"("albumType":1,"albumKind":1)",
     get("album/list?userId=&albumKind=1&albumType=1&pageSize=10&pageNum=1&groupId=")},
    {"albumList", "noPage", R"({"pageSize":0})", failure(13000400, ""), "",
     get("album/list?userId=&albumKind=0&albumType=0&pageSize=0&pageNum=0")},

    {"albumContentList", "absent", absent, refused},
    {"albumContentList", "fresh", "{}", failure(13000404, "there is no endpoint"), "",
     get("album//list?pageSize=100&pageCursor=&sortType=1&sortDirection=2")},
    {"albumContentList", "full",
     R"({"albumId":"ALBUM","pageSize":10,"pageCursor":"","sortType":3,"sortDirection":1})",
     success + R"("total":1,"contentList":[{"id":"FILE",)", R"("recycled":"false")",
     get("album/ALBUM/list?pageSize=10&pageCursor=&sortType=3&sortDirection=3")},
    {"albumContentList", "unknown", R"({"albumId":"999"})", failure(13000404, ""), "",
     get("album/999/list?pageSize=100&pageCursor=&sortType=1&sortDirection=2")},

    {"albumContentAdd", "absent", absent, refused},
    {"albumContentAdd", "fresh", "{}", refused},
    {"albumContentAdd", "full", R"({"albumId":"ALBUM","req":{"fileIds":[{"fileId":"FILE","ownerId":""}]}})",
     done, "", post("album/ALBUM/add")},
    {"albumContentAdd", "noFiles", R"({"albumId":"ALBUM","req":{}})",
     failure(13000400, R"(\"fileIds\" is missing or empty)"), "", post("album/ALBUM/add")},
    {"albumContentAdd", "aFolder", R"({"albumId":"ALBUM","req":{"fileIds":[{"fileId":"FOLDER"}]}})",
     failure(13000400, R"(\"FOLDER\" is a folder)"), "", post("album/ALBUM/add")},

    {"albumContentDelete", "absent", absent, refused},
    {"albumContentDelete", "fresh", "{}", refused},
    {"albumContentDelete", "full", R"({"albumId":"ALBUM","req":{"id":"FILE"}})", done, "",
     "DELETE /quillbox/ose/v1/ALBUM/batchDelete"},
    {"albumContentDelete", "notInIt", R"({"albumId":"ALBUM","req":{"id":"FOLDER"}})",
     failure(13000404, "the album holds no file"), "", "DELETE /quillbox/ose/v1/ALBUM/batchDelete"},
};

/// An absent record is not refused here: the request goes out to the bare host.
const std::vector<Row> shareFolderRows = {
    {"shareFolderCreate", "absent", absent, failure(13000404, "there is no endpoint /"), "", "POST /"},
    {"shareFolderCreate", "fresh", "{}", failure(13000400, R"(\"name\" is missing or empty)"), "",
     post("sharefolder/create")},
    {"shareFolderCreate", "full", R"({"shareType":1,"containerId":"CONTAINER","name":"club"})",
     success + R"("id":"2","data":{"tenantId":")", R"("groupId":2,"id":"2","shareFolderId":"2")",
     post("sharefolder/create")},
    {"shareFolderCreate", "nameTaken", R"({"name":"known"})", failure(13000405, ""), "",
     post("sharefolder/create")},

    {"shareFolderRename", "absent", absent, failure(13000404, "there is no endpoint /"), "", "POST /"},
    {"shareFolderRename", "fresh", "{}", failure(13000400, R"(\"id\" is missing or empty)"), "",
     post("sharefolder/rename")},
    {"shareFolderRename", "full", R"({"id":"GROUP","fileName":"kin"})", success + R"("id":"GROUP")", "",
     post("sharefolder/rename")},

    {"shareFolderDelete", "absent", absent, failure(13000404, "there is no endpoint /"), "", "POST /"},
    {"shareFolderDelete", "fresh", "{}", failure(13000400, R"(\"id\" is missing or empty)"), "",
     post("sharefolder/delete")},
    {"shareFolderDelete", "full", R"({"id":"GROUP"})", done, "", post("sharefolder/delete")},

    {"shareFolderDetail", "absent", absent, failure(13000404, "there is no endpoint /"), "", "GET /"},
    {"shareFolderDetail", "fresh", "{}", failure(13000404, R"(there is no share folder \"0\")"), "",
     get("sharefolder/metadata/0")},
    {"shareFolderDetail", "full", R"({"shareFolderId":1})",
     success + R"("total":1,"shareFolder":{"tenantId":")", R"("name":"family")",
     get("sharefolder/metadata/1")},

    {"shareFolderList", "absent", absent, failure(13000404, "there is no endpoint /"), "", "GET /"},
    {"shareFolderList", "fresh", "{}", success + R"("total":1,"folders":[{)", R"("maxMember":10)",
     get("sharefolder/list?offset=0&limit=0")},
    {"shareFolderList", "full", R"({"offset":0,"limit":10,"keyWord":"FAM","status":"0","queryType":1})",
     success + R"("total":1,"folders":[{)", R"("name":"family")",
     get("sharefolder/list?offset=0&limit=10&keyWord=FAM&status=0&queryType=1")},

    {"shareFolderAlbumList", "absent", absent, failure(13000404, "there is no endpoint /"), "", "GET /"},
    {"shareFolderAlbumList", "fresh", "{}", failure(13000400, R"(\"shareFolderId\" is empty)"), "",
     get("sharefolder/album/list?offset=0&limit=0&shareFolderId=")},
    {"shareFolderAlbumList", "full", R"({"offset":0,"limit":10,"keyWord":"","shareFolderId":"GROUP"})",
     success + R"("total":0,"folders":[])", "",
     get("sharefolder/album/list?offset=0&limit=10&shareFolderId=GROUP&keyWord=")},
};

class CallAlbumRow : public CallServiceTest, public testing::WithParamInterface<Row> {
  protected:
    CallAlbumRow() {
        const auto group = valueOf(call("shareFolderCreate", R"({"name":"family"})").output, "id");
        const auto album = valueOf(call("albumCreate", R"({"name":"album"})").output, "albumId");
        call("albumContentAdd", R"({"albumId":")" + album + R"(","req":{"fileIds":[{"fileId":"FILE"}]}})");
        know("GROUP", group);
        know("ALBUM", album);
    }
};

TEST_P(CallAlbumRow, IsAnswered) {
    expectAnswer(GetParam());
}

INSTANTIATE_TEST_SUITE_P(OfTheAlbums, CallAlbumRow, testing::ValuesIn(albumRows), nameOf);
INSTANTIATE_TEST_SUITE_P(OfTheShareFolders, CallAlbumRow, testing::ValuesIn(shareFolderRows), nameOf);

TEST_F(CallServiceTest, EveryOperationOfTheAlbumsAndShareFoldersHasItsRows) {
    EXPECT_EQ(operationsIn(albumRows), operationsOf({"IAlbum"}));
    EXPECT_EQ(operationsIn(shareFolderRows), operationsOf({"IShareFolder"}));
}

}  // namespace
}  // namespace quillbox_test::call_albums
