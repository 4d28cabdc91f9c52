#include "tests/quillboxd/jobs_client.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

/// A person who reads the changes of sync folders.
class SyncClient : public JobsClient {
  public:
    using JobsClient::JobsClient;

    HttpAnswer ask(const std::string& operation, const json::object& body) const {
        return post("/syncDir/" + operation, json::serialize(body));
    }
    HttpAnswer open(const std::string& folder) const { return ask("create", {{"fileId", folder}}); }
    HttpAnswer startCursorOf(const std::string& folder) const {
        return ask("getStartCursor", {{"fileId", folder}});
    }
    std::string startCursor(const std::string& folder) const {
        return textOf(startCursorOf(folder).object(), "startCursor");
    }
    HttpAnswer list(const std::string& folder, const std::string& cursor, int size = 1000) const {
        return ask("listChange", {{"syncDirId", folder}, {"cursor", cursor}, {"pageSize", size}});
    }
    /// "kind name" of each change behind the cursor, which moves on.
    std::vector<std::string> news(const std::string& folder, std::string& cursor) const {
        const auto answer = list(folder, cursor);
        EXPECT_EQ(answer.status, 200) << answer.body;
        const auto page = answer.object();
        cursor = textOf(page, "nextCursor");
        std::vector<std::string> news;
        for (const auto& change : page.at("fileChangeList").as_array())
            news.push_back(textOf(change.as_object(), "changeType") + " " +
                           textOf(change.at("fileInfo").as_object(), "fileName"));
        return news;
    }
    HttpAnswer walk(const std::string& body) const { return post("/file/walkFile", body); }
    static std::vector<std::string> namesIn(const HttpAnswer& answer) {
        EXPECT_EQ(answer.status, 200) << answer.body;
        return column(answer.object(), "files", "fileName");
    }
    HttpAnswer rename(const std::string& id, const std::string& name) const {
        return post("/files/rename/" + id, json::serialize(json::object{{"name", name}}));
    }
};

enum Type { copy = 1, move = 2, remove = 3 };

class SyncFoldersTest : public testing::Test {
  protected:
    SyncFoldersTest() {
        folder_ = client_.makeFolder("synced");
        client_.open(folder_);
        cursor_ = client_.startCursor(folder_);
    }
    std::vector<std::string> news() { return client_.news(folder_, cursor_); }
    json::object onlyChange() {
        const auto page = client_.list(folder_, cursor_).object();
        EXPECT_THAT(page.at("fileChangeList").as_array(), SizeIs(1));
        return page.at("fileChangeList").as_array().at(0).as_object();
    }

    QuillboxdProcess process_;
    SyncClient client_{process_.url()};
    std::string folder_;
    std::string cursor_;
};

TEST_F(SyncFoldersTest, AChangeTellsWhetherTheItemWasAFavourite) {
    const auto id = client_.makeFolder("new", folder_);
    client_.post("/star/batch", R"({"starred":true,"subRequestList":[{"fileId":")" + id + "\"}]}");
    client_.rename(id, "starred");
    client_.post("/star/batch", R"({"starred":false,"subRequestList":[{"fileId":")" + id + "\"}]}");
    const auto page = client_.list(folder_, cursor_).object();
    const auto& changes = page.at("fileChangeList").as_array();
    ASSERT_THAT(changes, SizeIs(2));
    EXPECT_EQ(changes[0].at("fileInfo").at("favorite"), false);
    EXPECT_EQ(changes[1].at("fileInfo").at("favorite"), true);
}

// ---- opening and closing

TEST_F(SyncFoldersTest, AFolderIsMadeOrTakenByItsName) {
    const auto made = client_.ask("create", {{"fileName", "new"}, {"parentFolder", folder_}}).object();
    EXPECT_FALSE(made.at("exist").as_bool());
    EXPECT_EQ(textOf(made, "fileName"), "new");
    EXPECT_EQ(textOf(made, "container"), client_.container());
    EXPECT_THAT(client_.names(folder_), ElementsAre("new"));
    const auto again = client_.ask("create", {{"fileName", "new"}, {"parentFolder", folder_}}).object();
    EXPECT_TRUE(again.at("exist").as_bool());
    EXPECT_EQ(textOf(again, "fileId"), textOf(made, "fileId"));
    const auto byId = client_.open(textOf(made, "fileId")).object();
    EXPECT_TRUE(byId.at("exist").as_bool());
    EXPECT_EQ(textOf(byId, "fileName"), "new");
}

TEST_F(SyncFoldersTest, OpeningAnOpenFolderKeepsItsFeed) {
    client_.makeFolder("a", folder_);
    EXPECT_EQ(client_.open(folder_).status, 200);
    EXPECT_THAT(news(), ElementsAre("create a"));
}

TEST_F(SyncFoldersTest, AHiddenFolderIsMade) {
    client_.ask("create", {{"fileName", "quiet"}, {"hidden", true}});
    EXPECT_THAT(client_.names(), ElementsAre("synced"));
}

TEST_F(SyncFoldersTest, AClosedFolderHasNoFeed) {
    const auto closed = client_.ask("close", {{"syncDirId", folder_}});
    EXPECT_EQ(textOf(closed.object(), "syncDirId"), folder_);
    expectRefused(client_.ask("close", {{"syncDirId", folder_}}), 404, "no sync folder");
    expectRefused(client_.list(folder_, ""), 404, "no sync folder");
    expectRefused(client_.startCursorOf(folder_), 404, "no sync folder");
    EXPECT_THAT(client_.names(), ElementsAre("synced")) << "the folder itself stays";
}

TEST_F(SyncFoldersTest, ACursorFromBeforeAClosingIsUnknown) {
    client_.ask("close", {{"syncDirId", folder_}});
    client_.makeFolder("unseen", folder_);
    client_.open(folder_);
    expectRefused(client_.list(folder_, cursor_), 409, "walk the folder");
    cursor_ = client_.startCursor(folder_);
    client_.makeFolder("seen", folder_);
    EXPECT_THAT(news(), ElementsAre("create seen"));
}

TEST_F(SyncFoldersTest, ADeletedSyncFolderIsClosed) {
    client_.run(JobsClient::body(remove, {folder_}));
    expectRefused(client_.list(folder_, cursor_), 404, "no sync folder");
}

// ---- the feed

TEST_F(SyncFoldersTest, EachChangeIsToldOnceInItsOrder) {
    const auto inner = client_.makeFolder("inner", folder_);
    const auto file = client_.upload("file", "content", 100, inner);
    client_.rename(file, "renamed");
    auto body = client_.createBody("renamed", "other", 100);
    body["parentFolder"] = json::array{inner};
    body["autoRename"] = 5;
    const auto created = client_.Client::create(body).object();
    client_.putParts(created, "other");
    client_.complete(file, "other");
    client_.run(JobsClient::body(move, {file}, "/synced"));
    client_.run(JobsClient::body(remove, {inner, file}));
    EXPECT_THAT(news(), ElementsAre("create inner", "create file", "rename renamed", "update renamed",
                                    "move renamed", "delete inner", "delete renamed"));
    EXPECT_THAT(news(), IsEmpty());
}

TEST_F(SyncFoldersTest, AChangeTellsTheFileAsItWasThen) {
    const auto file = client_.upload("file", "content", 100, folder_);
    auto change = onlyChange();
    auto info = change.at("fileInfo").as_object();
    EXPECT_EQ(textOf(info, "id"), file);
    EXPECT_EQ(textOf(info, "sha256"), sha256Hex("content"));
    EXPECT_EQ(info.at("size").as_int64(), 7);
    EXPECT_EQ(json::serialize(info.at("parentFolder")), "[\"" + folder_ + "\"]");
    EXPECT_EQ(textOf(change.at("extInfo").as_object(), "idPath"), "/" + folder_ + "/" + file);
    client_.run(JobsClient::body(remove, {file}));
    EXPECT_EQ(client_.list(folder_, cursor_).object().at("fileChangeList").as_array().at(1).at("fileInfo"),
              info);
}

TEST_F(SyncFoldersTest, AnUploadIsToldWhenItIsComplete) {
    auto body = client_.createBody("file", "content", 100);
    body["parentFolder"] = json::array{folder_};
    const auto created = client_.Client::create(body).object();
    EXPECT_THAT(news(), IsEmpty());
    client_.putParts(created, "content");
    client_.complete(textOf(created, "fileId"), "content");
    EXPECT_THAT(news(), ElementsAre("create file"));
}

TEST_F(SyncFoldersTest, ACopyIsToldItemByItem) {
    const auto tree = client_.makeFolder("tree");
    client_.upload("a", "a", 100, tree);
    client_.upload("b", "b", 100, tree);
    client_.run(JobsClient::body(copy, {tree}, "/synced"));
    const auto told = news();
    EXPECT_EQ(told.at(0), "create tree");
    EXPECT_THAT(told, UnorderedElementsAre("create tree", "create a", "create b"));
}

TEST_F(SyncFoldersTest, AMoveSaysWhereFromAndWhereTo) {
    const auto expectMove = [&](const std::string& item, const std::string& to, int type,
                                const std::string& from) {
        cursor_ = client_.startCursor(folder_);
        client_.run(JobsClient::body(move, {item}, to));
        const auto change = onlyChange();
        EXPECT_EQ(textOf(change, "changeType"), "move");
        const auto& more = change.at("extInfo").as_object();
        EXPECT_EQ(more.at("moveType").as_int64(), type);
        EXPECT_EQ(textOf(more, "srcParentFileId"), from);
    };
    const auto item = client_.makeFolder("item");
    client_.upload("below", "below", 100, item);
    const auto inner = client_.makeFolder("inner", folder_);
    expectMove(item, "/synced", 2, "root");
    expectMove(item, "/synced/inner", 1, folder_);
    expectMove(item, "/", 3, inner);
}

TEST_F(SyncFoldersTest, WhatHappensElsewhereIsNotTold) {
    const auto other = client_.makeFolder("other");
    client_.makeFolder("below", other);
    client_.rename(folder_, "still synced");
    EXPECT_THAT(news(), IsEmpty()) << "the folder itself is not below it";
}

TEST_F(SyncFoldersTest, EachFolderAboveHasTheChange) {
    const auto inner = client_.makeFolder("inner", folder_);
    client_.open(inner);
    client_.open("root");
    auto innerCursor = client_.startCursor(inner);
    auto rootCursor = client_.startCursor("root");
    cursor_ = client_.startCursor(folder_);
    client_.makeFolder("new", inner);
    EXPECT_THAT(client_.news(inner, innerCursor), ElementsAre("create new"));
    EXPECT_THAT(client_.news("root", rootCursor), ElementsAre("create new"));
    EXPECT_THAT(news(), ElementsAre("create new"));
}

TEST_F(SyncFoldersTest, AFeedComesInPages) {
    for (const char* name : {"a", "b", "c"}) client_.makeFolder(name, folder_);
    std::vector<std::string> names;
    std::vector<bool> more;
    auto cursor = cursor_;
    do {
        const auto page = client_.list(folder_, cursor, 2).object();
        for (const auto& change : page.at("fileChangeList").as_array())
            names.push_back(textOf(change.at("fileInfo").as_object(), "fileName"));
        more.push_back(page.at("hasMore").as_bool());
        cursor = textOf(page, "nextCursor");
    } while (more.back());
    EXPECT_THAT(names, ElementsAre("a", "b", "c"));
    EXPECT_THAT(more, ElementsAre(true, false));
    EXPECT_EQ(textOf(client_.list(folder_, cursor).object(), "nextCursor"), cursor);
    EXPECT_FALSE(client_.list(folder_, cursor_, 3).object().at("hasMore").as_bool());
}

TEST_F(SyncFoldersTest, WithoutACursorTheFeedBeginsWithItsFolder) {
    client_.makeFolder("a", folder_);
    const auto answer = client_.ask("listChange", {{"syncDirId", folder_}});
    EXPECT_THAT(answer.object().at("fileChangeList").as_array(), SizeIs(1));
}

TEST_F(SyncFoldersTest, ACursorHoldsOverAKill) {
    client_.makeFolder("before", folder_);
    EXPECT_THAT(news(), ElementsAre("create before"));
    client_.makeFolder("between", folder_);
    process_.kill();
    process_.start();
    client_.makeFolder("after", folder_);
    EXPECT_THAT(news(), ElementsAre("create between", "create after"));
}

// ---- walking

TEST_F(SyncFoldersTest, AWalkFindsAllThatIsBelow) {
    const auto inner = client_.makeFolder("inner", folder_);
    client_.upload("deep", "deep", 100, inner);
    client_.upload("a", "a", 100, folder_);
    client_.upload("elsewhere", "b");
    const auto walk = [&](const std::string& more) {
        return SyncClient::namesIn(client_.walk(R"({"parentFileId":")" + folder_ + "\"" + more + "}"));
    };
    EXPECT_THAT(walk(""), ElementsAre("inner", "a", "deep"));
    EXPECT_THAT(walk(R"(,"type":"file")"), ElementsAre("a", "deep"));
    EXPECT_THAT(walk(R"(,"type":"folder")"), ElementsAre("inner"));
    EXPECT_THAT(walk(R"(,"sortInfo":{"sortType":3,"sortDirection":1})"), ElementsAre("inner", "deep", "a"));
    EXPECT_THAT(SyncClient::namesIn(client_.walk("{}")),
                ElementsAre("inner", "synced", "a", "deep", "elsewhere"));
}

TEST_F(SyncFoldersTest, AWalkComesInPages) {
    for (const char* name : {"a", "b", "c"}) client_.makeFolder(name, folder_);
    const auto first = client_.walk(R"({"parentFileId":")" + folder_ + R"(","pageInfo":{"pageSize":2}})");
    EXPECT_THAT(SyncClient::namesIn(first), ElementsAre("a", "b"));
    const json::object page{{"pageSize", 2}, {"pageCursor", textOf(first.object(), "nextCursor")}};
    const auto last =
        client_.walk(json::serialize(json::object{{"parentFileId", folder_}, {"pageInfo", page}}));
    EXPECT_THAT(SyncClient::namesIn(last), ElementsAre("c"));
    EXPECT_EQ(last.object().if_contains("nextCursor"), nullptr);
}

TEST_F(SyncFoldersTest, AHiddenFolderHidesWhatItHolds) {
    const auto hidden = client_.ask("create", {{"fileName", "quiet"}, {"hidden", true}}).object();
    client_.upload("inside", "x", 100, textOf(hidden, "fileId"));
    EXPECT_THAT(SyncClient::namesIn(client_.walk("{}")), ElementsAre("synced"));
    EXPECT_THAT(SyncClient::namesIn(client_.walk(R"({"includeHidden":true})")),
                ElementsAre("quiet", "synced", "inside"));
}

// ---- refusals

TEST_F(SyncFoldersTest, WhatIsNoSyncFolderIsRefused) {
    const auto file = client_.upload("file", "content");
    expectRefused(client_.ask("create", {}), 400, "fileName");
    expectRefused(client_.ask("create", {{"fileName", "a/b"}}), 400, "slash");
    expectRefused(client_.ask("create", {{"fileName", "file"}}), 400, "not a folder");
    expectRefused(client_.ask("create", {{"fileName", "x"}, {"parentFolder", "none"}}), 404, "none");
    expectRefused(client_.open("none"), 404, "none");
    expectRefused(client_.open(file), 400, "not a folder");
    expectRefused(client_.startCursorOf("none"), 404, "no sync folder");
    expectRefused(client_.startCursorOf("root"), 404, "no sync folder");
    expectRefused(client_.ask("getStartCursor", {}), 400, "fileId");
    expectRefused(client_.ask("close", {}), 400, "syncDirId");
    expectRefused(client_.ask("listChange", {}), 400, "syncDirId");
    expectRefused(client_.ask("create", {{"container", "1"}, {"fileName", "x"}}), 403, "container");
    expectRefused(client_.walk(R"({"parentFileId":"none"})"), 404, "none");
    expectRefused(client_.walk(R"({"type":"x"})"), 400, "type");
    expectRefused(client_.walk(R"({"containerId":"1"})"), 403, "container");
}

TEST_F(SyncFoldersTest, ACursorIsANumberOfTheFeed) {
    expectRefused(client_.list(folder_, "x"), 400, "cursor");
    expectRefused(client_.list(folder_, "999999"), 409, "walk the folder");
    expectRefused(client_.list(folder_, "-1"), 409, "walk the folder");
    expectRefused(client_.ask("listChange", {{"syncDirId", folder_}, {"cursor", 1}}), 400, "must be a text");
    expectRefused(client_.list(folder_, cursor_, 0), 400, "pageSize");
}

TEST_F(SyncFoldersTest, AnotherAccountHasItsOwnFolders) {
    const SyncClient other(process_.url(), "other");
    expectRefused(other.open(folder_), 404, folder_);
    expectRefused(other.list(folder_, cursor_), 404, "no sync folder");
    other.open("root");
    auto cursor = other.startCursor("root");
    client_.makeFolder("a", folder_);
    EXPECT_THAT(other.news("root", cursor), IsEmpty());
}

}  // namespace
}  // namespace quillboxd_test
