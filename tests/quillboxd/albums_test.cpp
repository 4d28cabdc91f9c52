#include "quillboxd/http/message.h"
#include "tests/quillboxd/album_client.h"
#include "tests/quillboxd/jobs_client.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AlbumsTest : public AlbumTest {
  protected:
    static HttpAnswer update(const Client& client, const std::string& id, const std::string& body) {
        return client.post("/" + id + "/update", body);
    }
    HttpAnswer take(const Client& client, const std::string& id, const std::string& file) const {
        return remove(client, "/" + id + "/batchDelete", R"({"id":")" + file + "\"}");
    }
    std::vector<std::string> names(const Client& client, const std::string& query = "") const {
        return column(client.get("/album/list" + query), "albumList", "name");
    }
    json::object first(const Client& client) const {
        return answerOf(client.get("/album/list")).at("albumList").at(0).as_object();
    }
};

// ---- albums

TEST_F(AlbumsTest, AnAlbumIsKept) {
    const auto folder = owner_.makeFolder("photos");
    const auto id = newAlbum(owner_, "holiday",
                             R"("type":"3","albumKind":"2","scopeDir":[")" + folder +
                                 R"("],"scopeKind":"2","containerId":")" + owner_.container() + "\"");
    const auto album = first(owner_);
    EXPECT_EQ(textOf(album, "id"), id);
    EXPECT_EQ(textOf(album, "name"), "holiday");
    EXPECT_EQ(album.at("albumType"), 3);
    EXPECT_EQ(album.at("albumKind"), 2);
    EXPECT_EQ(textOf(album, "scopeKind"), "2");
    EXPECT_EQ(json::serialize(album.at("scopeDir")), "[\"" + folder + "\"]");
    EXPECT_EQ(textOf(album, "createTime"), textOf(album, "updateTime"));
    EXPECT_FALSE(album.contains("coverImg"));
}

TEST_F(AlbumsTest, WhatCannotBeAnAlbumIsRefused) {
    const auto file = owner_.upload("a", "a");
    const auto with = [&](const std::string& more) { return askForAlbum(owner_, "x", more); };
    expectRefused(owner_.post("/album/create", "{}"), 400, "name");
    expectRefused(with(R"("type":"x")"), 400, "type");
    expectRefused(with(R"("type":1)"), 400, "must be a text");
    expectRefused(with(R"("scopeKind":"3")"), 400, "scopeKind");
    expectRefused(with(R"("shareFolderId":"1")"), 400, "shareFolderId");
    expectRefused(with(R"("shareFolderId":999)"), 404, "no share folder");
    expectRefused(with(R"("containerId":"12")"), 403, "container");
    expectRefused(with(R"("scopeDir":["12"])"), 404, "12");
    expectRefused(with(R"("scopeDir":[")" + file + "\"]"), 400, "is a file");
    expectRefused(with(R"("scopeDir":["root"])"), 403, "root");
    expectRefused(with(R"("scopeDir":[")" + owner_.makeFolder("out") + R"("],"scopeParentFolderId":")" +
                       owner_.makeFolder("in") + "\""),
                  400, "scopeParentFolderId");
    EXPECT_THAT(names(owner_), IsEmpty());
    newAlbum(owner_, "taken");
    expectRefused(askForAlbum(owner_, "taken"), 409, "already");
    newAlbum(other_, "taken");
}

TEST_F(AlbumsTest, AnUpdateKeepsWhatItDoesNotName) {
    const auto folder = owner_.makeFolder("photos");
    const auto id = newAlbum(owner_, "old", R"("scopeDir":[")" + folder + R"("],"scopeKind":"2")");
    newAlbum(other_, "foreign");
    EXPECT_EQ(update(owner_, id, R"({"name":"new","cover_image_url":"http://c/1"})").status, 200);
    auto album = first(owner_);
    EXPECT_EQ(textOf(album, "name"), "new");
    EXPECT_EQ(textOf(album, "coverImg"), "http://c/1");
    EXPECT_EQ(textOf(album, "scopeKind"), "2");
    EXPECT_EQ(album.at("scopeDir").as_array().size(), 1U);
    update(owner_, id, R"({"scopeDirList":[],"scopeKind":1,"cover_image_url":""})");
    album = first(owner_);
    EXPECT_EQ(textOf(album, "scopeKind"), "1");
    EXPECT_THAT(album.at("scopeDir").as_array(), IsEmpty());
    EXPECT_FALSE(album.contains("coverImg"));
}

TEST_F(AlbumsTest, AnUpdateThatCannotBeIsRefused) {
    const auto id = newAlbum(owner_, "album");
    newAlbum(owner_, "taken");
    expectRefused(update(owner_, id, "null"), 400, "JSON object");
    expectRefused(update(owner_, id, R"({"scopeKind":"1"})"), 400, "scopeKind");
    expectRefused(update(owner_, id, R"({"scopeKind":0})"), 400, "scopeKind");
    expectRefused(update(owner_, id, R"({"name":""})"), 400, "name");
    expectRefused(update(owner_, id, R"({"name":"taken"})"), 409, "already");
    expectRefused(update(owner_, "999", "{}"), 404, "no album \"999\"");
    expectRefused(update(other_, id, R"({"name":"mine"})"), 404, "no album");
}

TEST_F(AlbumsTest, ADeletedAlbumLeavesItsFiles) {
    const auto id = newAlbum(owner_, "album");
    put(owner_, id, owner_.upload("a", "a"));
    expectRefused(remove(other_, "/album/" + id), 404, "no album");
    EXPECT_EQ(remove(owner_, "/album/" + id).status, 200);
    expectRefused(owner_.get("/album/" + id + "/list"), 404, "no album");
    expectRefused(remove(owner_, "/album/" + id), 404, "no album");
    EXPECT_THAT(owner_.names(), ElementsAre("a"));
    EXPECT_NE(newAlbum(owner_, "album"), id);
}

TEST_F(AlbumsTest, TheListHasWhatIsAskedFor) {
    newAlbum(owner_, "one", R"("type":"1","albumKind":"1")");
    newAlbum(owner_, "two", R"("type":"2","albumKind":"1")");
    newAlbum(owner_, "three", R"("type":"2","albumKind":"2")");
    const auto fresh = "?userId=&albumKind=0&albumType=0&pageSize=100&pageNum=0";
    EXPECT_THAT(names(owner_, fresh), ElementsAre("three", "two", "one"));
    EXPECT_THAT(names(owner_, std::string(fresh) + "&groupId="), ElementsAre("three", "two", "one"));
    EXPECT_THAT(names(owner_, "?albumType=2"), ElementsAre("three", "two"));
    EXPECT_THAT(names(owner_, "?albumType=2&albumKind=1"), ElementsAre("two"));
    EXPECT_THAT(names(owner_, "?userId=" + userId("owner")), ElementsAre("three", "two", "one"));
    EXPECT_THAT(names(owner_, "?userId=" + userId("other")), IsEmpty());
    EXPECT_THAT(names(other_), IsEmpty());
}

TEST_F(AlbumsTest, TheListComesInPages) {
    for (const auto* name : {"1", "2", "3"}) newAlbum(owner_, name);
    const auto page = [&](const char* number) {
        return owner_.get(std::string("/album/list?pageSize=2&pageNum=") + number);
    };
    EXPECT_THAT(column(page("0"), "albumList", "name"), ElementsAre("3", "2"));
    EXPECT_EQ(textOf(answerOf(page("1")), "nextPageCursor"), "2");
    EXPECT_THAT(column(page("2"), "albumList", "name"), ElementsAre("1"));
    EXPECT_FALSE(answerOf(page("2")).contains("nextPageCursor"));
    EXPECT_EQ(totalOf(page("2")), 3);
    EXPECT_THAT(column(page("9223372036854775807"), "albumList", "name"), IsEmpty());
    expectRefused(owner_.get("/album/list?pageSize=0"), 400, "pageSize");
    expectRefused(owner_.get("/album/list?albumType=x"), 400, "albumType");
}

// ---- what is in them

TEST_F(AlbumsTest, FilesArePutInAndTakenOut) {
    const auto id = newAlbum(owner_, "album");
    const auto a = owner_.upload("a.jpg", "a");
    const auto b = owner_.upload("b.txt", "b");
    const auto body = R"({"fileIds":[{"fileId":")" + a + R"("},{"fileId":")" + b + R"(","ownerId":")" +
                      userId("owner") + "\"}]}";
    EXPECT_EQ(owner_.post("/album/" + id + "/add", body).status, 200);
    EXPECT_EQ(put(owner_, id, a).status, 200) << "what is in it stays in it";
    EXPECT_THAT(contents(owner_, id), ElementsAre("a.jpg", "b.txt"));
    EXPECT_EQ(take(owner_, id, a).status, 200);
    EXPECT_THAT(contents(owner_, id), ElementsAre("b.txt"));
    expectRefused(take(owner_, id, a), 404, "holds no file");
    expectRefused(take(owner_, id, "x"), 404, "holds no file");
    EXPECT_THAT(owner_.names(), ElementsAre("a.jpg", "b.txt"));
}

TEST_F(AlbumsTest, AFileInAnAlbumIsTold) {
    const auto id = newAlbum(owner_, "album");
    const auto file = owner_.upload("a.txt", "hello");
    put(owner_, id, file);
    const auto answer = answerOf(owner_.get("/album/" + id + "/list?pageSize=10"));
    EXPECT_EQ(answer.at("total"), 1);
    const auto& content = answer.at("contentList").at(0).as_object();
    EXPECT_EQ(textOf(content, "id"), file);
    EXPECT_EQ(textOf(content, "ownerId"), userId("owner"));
    EXPECT_EQ(textOf(content, "fileSuffix"), "txt");
    EXPECT_EQ(textOf(content, "takeTime"), textOf(content, "createdTime"));
    EXPECT_EQ(textOf(content, "recycled"), "false");
    EXPECT_EQ(textOf(content, "favorite"), "false");
    EXPECT_EQ(json::serialize(content.at("containers")), "[\"" + owner_.container() + "\"]");
    EXPECT_EQ(send("GET", textOf(content, "contentUrl")).body, "hello");
    EXPECT_EQ(send("GET", textOf(first(owner_), "coverImg")).body, "hello");
}

TEST_F(AlbumsTest, OnlyOwnFilesArePutIn) {
    const auto id = newAlbum(owner_, "album");
    const auto file = owner_.upload("a", "a");
    const auto add = [&](const std::string& body) { return owner_.post("/album/" + id + "/add", body); };
    expectRefused(add("{}"), 400, "fileIds");
    expectRefused(add(R"({"fileIds":[]})"), 400, "fileIds");
    expectRefused(add(R"({"fileIds":["x"]})"), 400, "list of objects");
    expectRefused(add(R"({"fileIds":[{}]})"), 400, "fileId");
    expectRefused(add(R"({"fileIds":[{"fileId":")" + file + R"("},{"fileId":"12"}]})"), 404, "12");
    expectRefused(add(R"({"fileIds":[{"fileId":")" + owner_.makeFolder("f") + "\"}]}"), 400, "is a folder");
    expectRefused(add(R"({"fileIds":[{"fileId":")" + file + R"(","ownerId":"12"}]})"), 403,
                  "not the caller's");
    expectRefused(add(R"({"fileIds":[{"fileId":")" + other_.upload("b", "b") + "\"}]}"), 404, "no file");
    expectRefused(put(other_, id, file), 404, "no album");
    expectRefused(remove(owner_, "/" + id + "/batchDelete", "{}"), 400, "id");
    expectRefused(remove(owner_, "/" + id + "/batchDelete", R"({"id":"1","favorite":true})"), 400,
                  "favorite");
    EXPECT_THAT(contents(owner_, id), IsEmpty()) << "all are put in or none";
}

TEST_F(AlbumsTest, AScopeBringsTheFilesOfItsFolders) {
    const auto photos = owner_.makeFolder("photos");
    const auto year = owner_.makeFolder("2026", photos);
    owner_.upload("in photos", "1", 1000, photos);
    const auto deep = owner_.upload("in 2026", "2", 1000, year);
    owner_.upload("elsewhere", "3");
    const auto all = newAlbum(owner_, "all", R"("scopeParentFolderId":")" + photos + "\"");
    const auto direct = newAlbum(owner_, "direct", R"("scopeKind":"2","scopeDir":[")" + photos + "\"]");
    const auto inner = newAlbum(owner_, "inner",
                                R"("scopeDir":[")" + year + R"("],"scopeParentFolderId":")" + photos + "\"");
    EXPECT_THAT(contents(owner_, all), ElementsAre("in 2026", "in photos"));
    EXPECT_THAT(contents(owner_, direct), ElementsAre("in photos"));
    EXPECT_THAT(contents(owner_, inner), ElementsAre("in 2026"));
    owner_.upload("later", "4", 1000, year);
    EXPECT_THAT(contents(owner_, inner), ElementsAre("in 2026", "later"));

    EXPECT_EQ(take(owner_, inner, deep).status, 200);
    EXPECT_THAT(contents(owner_, inner), ElementsAre("later")) << "its folder is in the scope, it is not";
    EXPECT_EQ(put(owner_, inner, deep).status, 200);
    EXPECT_THAT(contents(owner_, inner), ElementsAre("in 2026", "later"));
}

TEST_F(AlbumsTest, TheContentsComeInOrderAndInPages) {
    const auto id = newAlbum(owner_, "album");
    for (const auto* name : {"1", "2", "3"}) put(owner_, id, owner_.upload(name, name));
    EXPECT_THAT(contents(owner_, id, "?pageSize=9&pageCursor=&sortType=1&sortDirection=2"),
                ElementsAre("1", "2", "3"));
    EXPECT_THAT(contents(owner_, id, "?sortType=1&sortDirection=1"), ElementsAre("3", "2", "1"));
    const auto page = owner_.get("/album/" + id + "/list?pageSize=2");
    EXPECT_EQ(totalOf(page), 3);
    const auto cursor = quillboxd::encodePercent(textOf(answerOf(page), "nextPageCursor"));
    EXPECT_THAT(contents(owner_, id, "?pageSize=2&pageCursor=" + cursor), ElementsAre("3"));
    expectRefused(owner_.get("/album/" + id + "/list?pageCursor=x"), 400, "cursor");
    expectRefused(owner_.get("/album/" + id + "/list?pageSize=0"), 400, "pageSize");
}

TEST_F(AlbumsTest, AFileThatIsDeletedLeavesAlbumsAndLinks) {
    const auto id = newAlbum(owner_, "album");
    const auto file = owner_.upload("a", "a");
    put(owner_, id, file);
    const auto link = answerOf(owner_.post("/share", R"({"fileIds":[")" + file + "\"]}")).at("shareLink");
    JobsClient(process_.url(), "owner").run(JobsClient::body(3, {file}));
    EXPECT_THAT(contents(owner_, id), IsEmpty());
    const auto told = answerOf(owner_.get("/share/" + textOf(link.as_object(), "shareId")));
    EXPECT_EQ(told.at("shareLink").at("status"), 2);
    EXPECT_EQ(textOf(told.at("shareLink").as_object(), "displayName"), "");
}

// ---- albums of a share folder

TEST_F(AlbumsTest, MembersShareTheAlbumsOfTheirFolder) {
    const auto folder = newShareFolder(owner_, "family");
    join(folder, userId("other"));
    const auto id = newAlbum(other_, "party", R"("shareFolderId":)" + folder);
    newAlbum(owner_, "own");
    EXPECT_THAT(names(owner_), ElementsAre("own", "party"));
    EXPECT_THAT(names(owner_, "?groupId=" + folder), ElementsAre("party"));
    EXPECT_THAT(names(owner_, "?userId=" + userId("other")), ElementsAre("party"));
    expectRefused(askForAlbum(owner_, "party", R"("shareFolderId":)" + folder), 409, "already");

    put(owner_, id, owner_.upload("mine", "1"));
    put(other_, id, other_.upload("yours", "2"));
    EXPECT_THAT(contents(other_, id), ElementsAre("mine", "yours"));
    const auto list = owner_.get("/album/" + id + "/list");
    EXPECT_THAT(column(list, "contentList", "ownerId"), ElementsAre(userId("owner"), userId("other")));
    for (const auto& address : column(other_.get("/album/" + id + "/list"), "contentList", "contentUrl"))
        EXPECT_EQ(send("GET", address).status, 200);
}

TEST_F(AlbumsTest, AnAlbumOfAShareFolderHasAFolderOfItsOwn) {
    const auto folder = newShareFolder(owner_, "family");
    const auto id = newAlbum(owner_, "party", R"("shareFolderId":)" + folder);
    const auto query = "/sharefolder/album/list?shareFolderId=" + folder;
    const auto node = column(owner_.get(query), "folders", "fileId").at(0);
    owner_.upload("put there", "1", 1000, node);
    EXPECT_THAT(contents(owner_, id), ElementsAre("put there"));
    update(owner_, id, R"({"name":"ball"})");
    EXPECT_THAT(owner_.get("/files/path?fileId=" + node).body, testing::HasSubstr("/family/albums/ball"));
}

TEST_F(AlbumsTest, WhoMadeAnAlbumAndWhoOwnsTheFolderChangeIt) {
    const auto folder = newShareFolder(owner_, "family");
    join(folder, userId("other"));
    join(folder, userId("third"));
    const auto id = newAlbum(other_, "party", R"("shareFolderId":)" + folder);
    const Client third(process_.url(), "third");
    expectRefused(update(third, id, R"({"name":"x"})"), 403, "only who made");
    expectRefused(remove(third, "/album/" + id), 403, "only who made");
    EXPECT_EQ(update(other_, id, R"({"name":"a"})").status, 200);
    EXPECT_EQ(update(owner_, id, R"({"name":"b"})").status, 200);
    EXPECT_EQ(remove(owner_, "/album/" + id).status, 200);
}

// ---- over time

TEST(AlbumsPersistenceTest, AlbumsAndShareFoldersAreThereAfterAKill) {
    QuillboxdProcess process;
    const Client owner(process.url(), "owner");
    owner.post("/sharefolder/create", R"({"name":"family"})");
    const auto file = owner.upload("a.txt", "hello");
    owner.post("/album/create", R"({"name":"album","shareFolderId":1})");
    owner.post("/album/1/add", R"({"fileIds":[{"fileId":")" + file + "\"}]}");
    owner.post("/1/update", R"({"cover_image_url":"http://c"})");
    const auto told = [&] {
        return owner.get("/sharefolder/list").body + owner.get("/album/list").body +
               owner.get("/sharefolder/album/list?shareFolderId=1").body;
    };
    const auto before = told();
    process.kill();
    process.start();
    EXPECT_EQ(told(), before);
    EXPECT_THAT(owner.get("/album/1/list").body, testing::HasSubstr("\"fileName\":\"a.txt\""));
}

TEST_F(AlbumsTest, AResetTakesThemToo) {
    newAlbum(owner_, "album", R"("shareFolderId":)" + newShareFolder(owner_, "family"));
    newAlbum(owner_, "own");
    EXPECT_EQ(send("POST", process_.url() + "/_dev/reset").status, 200);
    const Client again(process_.url(), "owner");
    EXPECT_THAT(names(again), IsEmpty());
    EXPECT_EQ(totalOf(again.get("/sharefolder/list")), 0);
}

}  // namespace
}  // namespace quillboxd_test
