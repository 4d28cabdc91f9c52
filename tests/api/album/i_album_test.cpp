#include "baseapi/api/album/i_album.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_album {
namespace {

const std::string prefix = "/quillbox/ose/v1/";

Sent get(const std::string& target) {
    return {"GET", prefix + target, absent};
}
Sent post(const std::string& target, std::string body) {
    return {"POST", prefix + target, std::move(body)};
}
Sent del(const std::string& target, std::optional<std::string> body) {
    return {"DELETE", prefix + target, std::move(body)};
}

const std::string create =
    R"({"name":"Paintings é","type":"1","scopeDir":["f1","f2"],"scopeParentFolderId":"p","scopeKind":"2",)"
    R"("groupId":"g","albumKind":"3","shareFolderId":9007199254740993,"containerId":"c"})";
const std::string update =
    R"({"scopeParentFolderId":"p","scopeDirList":["f1"],"scopeKind":1,"cover_image_url":"http://a/?b=c&d",)"
    R"("name":"n"})";
const std::string files = R"({"fileIds":[{"fileId":"f1","ownerId":"o"},{"fileId":"f2"}]})";
const std::string content =
    R"({"id":"f1","takeTime":"t1","ownerId":"o","fileName":"n","mimeType":"m","fileType":"1","fileSuffix":"jpg",)"
    R"("parentFolder":["p"],"containers":["c"],"createdTime":"t2","editedTime":"t3","recycled":"false",)"
    R"("contentUrl":"http://a","thumbnailUrl":"http://b","favorite":"true"})";

/// The record around a body.
std::string of(const std::string& albumId, const std::string& req) {
    return R"({"albumId":")" + albumId + R"(","req":)" + req + "}";
}

const std::vector<OperationRow> rows = {
    {"albumCreate", "absent", absent, refused},
    {"albumCreate", "fresh", "{}", post("album/create", "{}")},
    {"albumCreate", "full", create, post("album/create", create)},

    {"albumUpdate", "absent", absent, refused},
    {"albumUpdate", "fresh", "{}", post("/update", "null")},
    {"albumUpdate", "full", of("a1", update), post("a1/update", update)},
    {"albumUpdate", "withoutAlbumId", R"({"req":{"name":"n"}})", post("/update", R"({"name":"n"})")},
    {"albumUpdate", "withoutReq", R"({"albumId":"a1"})", post("a1/update", "null")},
    {"albumUpdate", "emptyReq", of("a1", "{}"), post("a1/update", "{}")},

    {"albumDelete", "absent", absent, refused},
    {"albumDelete", "fresh", "{}", del("album/", absent)},
    {"albumDelete", "full", R"({"albumId":"a1"})", del("album/a1", absent)},
    {"albumDelete", "albumIdAsItIs", R"({"albumId":"a/b%20?c"})", del("album/a/b%20?c", absent)},

    {"albumList", "absent", absent, refused},
    {"albumList", "fresh", "{}", get("album/list?userId=&albumKind=0&albumType=0&pageSize=100&pageNum=0")},
    {"albumList", "full",
     R"({"userId":"u","albumKind":1,"albumType":2,"groupId":"g","pageSize":10,"pageNum":3})",
     get("album/list?userId=u&albumKind=1&albumType=2&pageSize=10&pageNum=3&groupId=g")},
    {"albumList", "emptyGroupId", R"({"groupId":""})",
     get("album/list?userId=&albumKind=0&albumType=0&pageSize=100&pageNum=0&groupId=")},
    {"albumList", "noPageSize", R"({"userId":"","pageSize":0})",
     get("album/list?userId=&albumKind=0&albumType=0&pageSize=0&pageNum=0")},

    {"albumContentList", "absent", absent, refused},
    {"albumContentList", "fresh", "{}",
     get("album//list?pageSize=100&pageCursor=&sortType=1&sortDirection=2")},
    {"albumContentList", "full",
     R"({"albumId":"a1","pageSize":10,"pageCursor":"c","sortType":3,"sortDirection":1})",
     get("album/a1/list?pageSize=10&pageCursor=c&sortType=3&sortDirection=3")},
    {"albumContentList", "onlySortType", R"({"albumId":"a1","sortType":0})",
     get("album/a1/list?pageSize=100&pageCursor=&sortType=0&sortDirection=0")},
    {"albumContentList", "onlySortDirection", R"({"albumId":"a1","sortDirection":7})",
     get("album/a1/list?pageSize=100&pageCursor=&sortType=1&sortDirection=2")},
    {"albumContentList", "valuesAsTheyAre", R"({"albumId":"a1","pageCursor":"a%20b&c=d"})",
     get("album/a1/list?pageSize=100&pageCursor=a%20b&c=d&sortType=1&sortDirection=2")},

    {"albumContentAdd", "absent", absent, refused},
    {"albumContentAdd", "fresh", "{}", refused},
    {"albumContentAdd", "full", of("a1", files), post("album/a1/add", files)},
    {"albumContentAdd", "withoutReq", R"({"albumId":"a1"})", refused},
    {"albumContentAdd", "withoutAlbumId", R"({"req":{}})", refused},
    {"albumContentAdd", "emptyAlbumId", of("", "{}"), post("album//add", "{}")},

    {"albumContentDelete", "absent", absent, refused},
    {"albumContentDelete", "fresh", "{}", refused},
    {"albumContentDelete", "full", of("a1", content), del("a1/batchDelete", content)},
    {"albumContentDelete", "withoutReq", R"({"albumId":"a1"})", refused},
    {"albumContentDelete", "withoutAlbumId", R"({"req":{}})", refused},
    {"albumContentDelete", "emptyAlbumId", of("", "{}"), del("/batchDelete", "{}")},
};

class AlbumOperation : public OperationTest {};

TEST_P(AlbumOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getAlbumImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IAlbum, AlbumOperation, testing::ValuesIn(rows), nameOf);

TEST(IAlbum, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IAlbum>(),
                testing::ElementsAre("albumCreate", "albumUpdate", "albumDelete", "albumList",
                                     "albumContentList", "albumContentAdd", "albumContentDelete"));
}

TEST(IAlbum, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getAlbumImpl(), &CloudInstance::shared().getAlbumImpl());
}

class AlbumAnswer : public ServiceTest {
  protected:
    IAlbum& albums_ = CloudInstance::shared().getAlbumImpl();
};

TEST_F(AlbumAnswer, HoldsTheNewAlbum) {
    answer_ = R"({"albumId":"a1","code":0,"msg":"success"})";
    EXPECT_EQ(std::get<std::string>(callOperation(albums_, "albumCreate", create).result), answer_);
}

TEST_F(AlbumAnswer, NeverComesForARecordThatHasNoJsonForm) {
    const auto expectRefusal = [&](const std::function<void(NetworkCallback<BaseResponse>)>& begin) {
        EXPECT_EQ(std::get<NetworkFailure>(awaitAnswer(begin).result).message, "params build faild");
        EXPECT_EQ(sent(), refused);
    };
    const std::string noText = "\xff";
    expectRefusal([&](auto callback) {
        albums_.albumUpdate({{.req = UpdateAlbumReq{.name = noText}}}, std::move(callback));
    });
    expectRefusal([&](auto callback) {
        albums_.albumContentAdd(
            {{.albumId = "a1", .req = BatchAddContent2AlbumReq{{{FileMap{.fileId = noText}}}}}},
            std::move(callback));
    });
    expectRefusal([&](auto callback) {
        albums_.albumContentDelete({{.req = AlbumContent{.id = noText}, .albumId = "a1"}},
                                   std::move(callback));
    });
}

TEST_F(AlbumAnswer, OfAnotherTypeIsAFailureThatNamesThePlace) {
    answer_ = R"({"contentList":[{"id":"f1","favorite":true}]})";
    const auto failure = std::get<NetworkFailure>(callOperation(albums_, "albumContentList", "{}").result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_EQ(failure.message,
              "str to bean error type mismatch: string at contentList[0].favorite (found a boolean)");
}

}  // namespace
}  // namespace baseapi::i_album
