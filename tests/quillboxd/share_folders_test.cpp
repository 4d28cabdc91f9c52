#include "tests/quillboxd/album_client.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ShareFoldersTest : public AlbumTest {
  protected:
    HttpAnswer detail(const Client& client, const std::string& id) const {
        return client.get("/sharefolder/metadata/" + id);
    }
    HttpAnswer rename(const Client& client, const std::string& id, const std::string& name) const {
        return client.post("/sharefolder/rename", R"({"id":")" + id + R"(","fileName":")" + name + "\"}");
    }
    HttpAnswer end(const Client& client, const std::string& id) const {
        return client.post("/sharefolder/delete", R"({"id":")" + id + "\"}");
    }
    std::vector<std::string> names(const Client& client, const std::string& query = "") const {
        return column(client.get("/sharefolder/list" + query), "folders", "name");
    }
};

TEST_F(ShareFoldersTest, AShareFolderIsAFolderOfItsOwner) {
    const auto made =
        answerOf(owner_.post("/sharefolder/create", R"({"shareType":1,"containerId":")" + owner_.container() +
                                                        R"(","name":"family"})"));
    const auto id = textOf(made, "id");
    const auto& data = made.at("data").as_object();
    EXPECT_EQ(textOf(data, "shareFolderId"), id);
    EXPECT_EQ(textOf(data, "creator"), userId("owner"));
    EXPECT_EQ(std::to_string(data.at("groupId").as_int64()), id);
    const auto told = answerOf(detail(owner_, id));
    EXPECT_EQ(told.at("total"), 1);
    const auto& folder = told.at("shareFolder").as_object();
    EXPECT_EQ(textOf(folder, "name"), "family");
    EXPECT_EQ(textOf(folder, "ownerName"), "owner");
    EXPECT_EQ(textOf(folder, "containerId"), owner_.container());
    EXPECT_EQ(folder.at("maxMember"), 10);
    EXPECT_EQ(folder.at("status"), 0);
    EXPECT_THAT(owner_.names(), ElementsAre("family"));
    EXPECT_THAT(owner_.names(textOf(folder, "shareFolderFileId")), ElementsAre("albums"));
    EXPECT_THAT(owner_.names(textOf(folder, "albumRootFileId")), IsEmpty());
}

TEST_F(ShareFoldersTest, WhatCannotBeAShareFolderIsRefused) {
    const auto create = [&](const char* body) { return owner_.post("/sharefolder/create", body); };
    expectRefused(create("{}"), 400, "name");
    expectRefused(create(R"({"name":"a/b"})"), 400, "slash");
    expectRefused(create(R"({"name":1})"), 400, "must be a text");
    expectRefused(create(R"({"name":"x","shareType":"1"})"), 400, "shareType");
    expectRefused(create(R"({"name":"x","containerId":"12"})"), 403, "container");
    owner_.makeFolder("taken");
    expectRefused(create(R"({"name":"taken"})"), 409, "taken");
    EXPECT_THAT(names(owner_), IsEmpty());
}

TEST_F(ShareFoldersTest, ANewNameIsThatOfTheFolderToo) {
    const auto id = newShareFolder(owner_, "old");
    EXPECT_EQ(textOf(answerOf(rename(owner_, id, "new")), "id"), id);
    EXPECT_THAT(names(owner_), ElementsAre("new"));
    EXPECT_THAT(owner_.names(), ElementsAre("new"));
    EXPECT_EQ(rename(owner_, id, "new").status, 200);
    owner_.makeFolder("taken");
    expectRefused(rename(owner_, id, "taken"), 409, "taken");
    expectRefused(rename(owner_, id, ""), 400, "fileName");
    expectRefused(rename(owner_, "999", "x"), 404, "no share folder \"999\"");
    expectRefused(rename(owner_, "x", "x"), 404, "no share folder \"x\"");
}

TEST_F(ShareFoldersTest, OnlyItsOwnerChangesIt) {
    const auto id = newShareFolder(owner_, "family");
    expectRefused(detail(other_, id), 404, "no share folder");
    expectRefused(rename(other_, id, "x"), 404, "no share folder");
    EXPECT_EQ(join(id, userId("other")).status, 200);
    EXPECT_EQ(answerOf(detail(other_, id)).at("total"), 2);
    expectRefused(rename(other_, id, "x"), 403, "only the owner");
    expectRefused(end(other_, id), 403, "only the owner");
}

TEST_F(ShareFoldersTest, AShareFolderTakesTenMembers) {
    const auto id = newShareFolder(owner_, "family");
    for (int i = 2; i <= 10; ++i) EXPECT_EQ(join(id, userId("member" + std::to_string(i))).status, 200);
    expectRefused(join(id, userId("other")), 409, "10 members");
    EXPECT_EQ(join(id, userId("member2")).status, 200) << "who is a member stays one";
    const auto told = answerOf(detail(owner_, id));
    EXPECT_EQ(told.at("total"), 10);
    EXPECT_EQ(told.at("shareFolder").at("status"), 1);
    expectRefused(join("999", userId("other")), 404, "no share folder");
    expectRefused(join(id, "999"), 404, "no user");
}

TEST_F(ShareFoldersTest, TheListHasWhatIsAskedFor) {
    const auto mine = newShareFolder(owner_, "mine");
    const auto theirs = newShareFolder(other_, "Theirs");
    EXPECT_THAT(names(owner_), ElementsAre("mine"));
    join(theirs, userId("owner"));
    EXPECT_THAT(names(owner_, "?offset=0&limit=0"), ElementsAre("Theirs", "mine"));
    EXPECT_THAT(names(owner_, "?queryType=1"), ElementsAre("mine"));
    EXPECT_THAT(names(owner_, "?queryType=2"), ElementsAre("Theirs"));
    EXPECT_THAT(names(owner_, "?keyWord=HEI"), ElementsAre("Theirs"));
    EXPECT_THAT(names(owner_, "?status=0"), ElementsAre("Theirs", "mine"));
    EXPECT_THAT(names(owner_, "?status=1"), IsEmpty());
    EXPECT_THAT(names(owner_, "?keyWord=&status="), ElementsAre("Theirs", "mine"));
    EXPECT_THAT(names(owner_, "?offset=1&limit=5"), ElementsAre("mine"));
    EXPECT_THAT(names(owner_, "?limit=1"), ElementsAre("Theirs"));
    EXPECT_EQ(totalOf(owner_.get("/sharefolder/list?limit=1")), 2);
    for (const auto* query :
         {"?offset=-1", "?limit=-1", "?limit=x", "?status=7", "?status=-1", "?queryType=3"})
        expectRefused(owner_.get(std::string("/sharefolder/list") + query), 400, "\"");
    EXPECT_NE(mine, theirs);
}

TEST_F(ShareFoldersTest, WhatIsDeletedLeavesTheFilesToTheirOwner) {
    const auto id = newShareFolder(owner_, "family");
    newAlbum(owner_, "album", R"("shareFolderId":)" + id);
    EXPECT_EQ(end(owner_, id).status, 200);
    expectRefused(detail(owner_, id), 404, "no share folder");
    EXPECT_THAT(names(owner_), IsEmpty());
    EXPECT_THAT(owner_.names(), ElementsAre("family"));
    EXPECT_THAT(column(owner_.get("/album/list"), "albumList", "name"), IsEmpty());
    expectRefused(end(owner_, id), 404, "no share folder");
    expectRefused(owner_.post("/sharefolder/delete", "{}"), 400, "id");
}

// ---- its albums

TEST_F(ShareFoldersTest, ItsAlbumsAreThoseOfAllMembers) {
    const auto id = newShareFolder(owner_, "family");
    join(id, userId("other"));
    newAlbum(owner_, "first", R"("shareFolderId":)" + id);
    newAlbum(other_, "second", R"("groupId":")" + id + "\"");
    const auto query = "/sharefolder/album/list?shareFolderId=" + id;
    EXPECT_THAT(column(owner_.get(query), "folders", "name"), ElementsAre("second", "first"));
    EXPECT_THAT(column(other_.get(query + "&keyWord=FIR"), "folders", "name"), ElementsAre("first"));
    EXPECT_THAT(column(other_.get(query + "&offset=1&limit=1"), "folders", "name"), ElementsAre("first"));
    EXPECT_EQ(totalOf(other_.get(query + "&limit=1")), 2);
    EXPECT_THAT(column(owner_.get(query), "folders", "creator"),
                ElementsAre(userId("other"), userId("owner")));
    const auto root = textOf(answerOf(detail(owner_, id)).at("shareFolder").as_object(), "albumRootFileId");
    EXPECT_THAT(owner_.names(root), ElementsAre("first", "second"));
    EXPECT_THAT(column(owner_.get(query), "folders", "fileId").size(), 2U);
}

TEST_F(ShareFoldersTest, ItsAlbumsAreForMembers) {
    const auto id = newShareFolder(owner_, "family");
    expectRefused(other_.get("/sharefolder/album/list?shareFolderId=" + id), 404, "no share folder");
    expectRefused(owner_.get("/sharefolder/album/list?offset=0&limit=0&shareFolderId="), 400,
                  "shareFolderId");
    expectRefused(owner_.get("/sharefolder/album/list"), 400, "shareFolderId");
    expectRefused(askForAlbum(other_, "x", R"("shareFolderId":)" + id), 404, "no share folder");
    expectRefused(askForAlbum(owner_, "x", R"("groupId":"999","shareFolderId":)" + id), 400, "groupId");
}

TEST_F(ShareFoldersTest, ALinkIsSharedWithItsGroup) {
    const auto id = newShareFolder(owner_, "family");
    const auto file = owner_.upload("a.txt", "hello");
    const auto ask = [&](const Client& client, const std::string& shared) {
        return client.post("/share",
                           R"({"scope":1,"groupIds":[")" + id + R"("],"fileIds":[")" + shared + "\"]}");
    };
    const auto link = answerOf(ask(owner_, file)).at("shareLink").as_object();
    const auto body = R"({"shortUrl":")" + textOf(link, "shortUrl") + "\"}";
    expectRefused(other_.post("/share/files", body), 403, "chosen people");
    join(id, userId("other"));
    EXPECT_THAT(column(other_.post("/share/files", body), "files", "fileName"), ElementsAre("a.txt"));
    const auto told = answerOf(owner_.get("/share/" + textOf(link, "shareId")));
    EXPECT_EQ(json::serialize(told.at("shareLink").at("groups")),
              R"([{"id":")" + id + R"(","name":"family"}])");
    const Client stranger(process_.url(), "stranger");
    expectRefused(ask(stranger, stranger.upload("b.txt", "x")), 404, "no group");
}

}  // namespace
}  // namespace quillboxd_test
