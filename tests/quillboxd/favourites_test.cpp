#include <chrono>
#include <thread>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test::favourites {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

HttpAnswer star(const Client& client, bool starred, const std::vector<std::string>& ids) {
    json::array entries;
    for (const auto& id : ids) entries.push_back(json::object{{"fileId", id}});
    return client.post("/star/batch",
                       json::serialize(json::object{{"starred", starred}, {"subRequestList", entries}}));
}

json::object page(const Client& client, const std::string& query = "") {
    const auto answer = client.get("/star/files?" + query);
    EXPECT_EQ(answer.status, 200) << answer.body;
    return answer.object();
}

std::vector<std::string> column(const json::object& answer, const char* key) {
    std::vector<std::string> values;
    for (const auto& file : answer.at("starFileList").as_array())
        values.push_back(textOf(file.as_object(), key));
    return values;
}

std::vector<std::string> favourites(const Client& client, const std::string& query = "") {
    return column(page(client, query), "fileName");
}

/// The service notes the millisecond of a star.
void awaitNextMillisecond() {
    using namespace std::chrono;
    const auto now = [] { return time_point_cast<milliseconds>(system_clock::now()); };
    const auto start = now();
    while (now() == start) std::this_thread::yield();
}

class FavouritesTest : public ServiceTest {
  protected:
    /// Three files in a folder, which became favourites in this order: b, c, a.
    FavouritesTest() {
        for (const auto* name : {"b", "c", "a"}) {
            ids_.push_back(client_.upload(name, std::string(3, *name), 10, folder_));
            star(client_, true, {ids_.back()});
            awaitNextMillisecond();
        }
    }

    std::string folder_ = client_.makeFolder("folder");
    std::vector<std::string> ids_;
};

TEST_F(FavouritesTest, AFavouriteIsToldWhole) {
    auto file = page(client_).at("starFileList").at(0).as_object();
    EXPECT_EQ(textOf(file, "id"), ids_[2]);
    EXPECT_EQ(textOf(file, "filePath"), "/folder/a");
    EXPECT_THAT(textOf(file, "starredTime"), HasSubstr("T"));
    EXPECT_TRUE(file.at("favorite").as_bool());
    EXPECT_FALSE(file.at("hidden").as_bool());
    EXPECT_EQ(file.at("size").as_int64(), 3);
    EXPECT_EQ(textOf(file, "sha256"), sha256Hex("aaa"));
    EXPECT_EQ(file.at("containers"), json::value({client_.container()}));
    const auto address = textOf(file.at("downloadLinks").at(0).as_object(), "downloadLink");
    EXPECT_EQ(send("GET", address).body, "aaa");
}

TEST_F(FavouritesTest, WhatWasStarredLastComesFirst) {
    EXPECT_THAT(favourites(client_), ElementsAre("a", "c", "b"));
    EXPECT_THAT(favourites(client_, "sortDirection=1"), ElementsAre("b", "c", "a"));
    EXPECT_THAT(favourites(client_, "sortType=1"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(favourites(client_, "sortType=1&sortDirection=1"), ElementsAre("c", "b", "a"));
    EXPECT_THAT(favourites(client_, "sortType=4"), ElementsAre("b", "c", "a"));
    star(client_, true, {folder_});
    EXPECT_THAT(favourites(client_), ElementsAre("folder", "a", "c", "b"));
}

TEST_F(FavouritesTest, StarringAgainChangesNothing) {
    const auto before = page(client_);
    EXPECT_EQ(star(client_, true, {ids_[0], ids_[0]}).object().at("status").as_int64(), 0);
    EXPECT_EQ(column(page(client_), "starredTime"), column(before, "starredTime"));
}

TEST_F(FavouritesTest, ACursorFitsIntoAQueryAsItStands) {
    star(client_, true, {client_.upload("é & ü%20\"", "x")});
    for (const std::string sort : {"", "&sortType=1", "&sortType=3", "&sortType=4&sortDirection=1"}) {
        std::vector<std::string> all;
        std::string cursor;
        do {
            const auto answer = page(client_, "pageSize=1&pageCursor=" + cursor + sort);
            const auto names = column(answer, "fileName");
            ASSERT_EQ(names.size(), 1U);
            all.push_back(names[0]);
            cursor = answer.contains("nextCursor") ? textOf(answer, "nextCursor") : "";
            EXPECT_EQ(cursor.find_first_not_of("0123456789abcdef"), cursor.npos) << cursor;
        } while (!cursor.empty() && all.size() < 10);
        EXPECT_EQ(all, favourites(client_, sort.substr(sort.empty() ? 0 : 1)));
    }
}

TEST_F(FavouritesTest, APageThatMakesNoSenseIsRefused) {
    const auto first = page(client_, "pageSize=1");
    expectRefused(client_.get("/star/files?pageSize=-1"), 400, "pageSize");
    expectRefused(client_.get("/star/files?pageSize=x"), 400, "pageSize");
    expectRefused(client_.get("/star/files?sortType=name"), 400, "sortType");
    expectRefused(client_.get("/star/files?pageCursor=xyz"), 400, "cursor");
    expectRefused(client_.get("/star/files?sortType=3&pageCursor=" + textOf(first, "nextCursor")), 400,
                  "cursor");
}

TEST_F(FavouritesTest, WhatIsUnstarredIsGoneFromTheList) {
    EXPECT_EQ(star(client_, false, {ids_[1], folder_}).object().at("status").as_int64(), 0);
    EXPECT_THAT(favourites(client_), ElementsAre("a", "b"));
    star(client_, false, ids_);
    EXPECT_THAT(favourites(client_), IsEmpty());
    EXPECT_FALSE(page(client_).contains("nextCursor"));
}

TEST_F(FavouritesTest, EveryListingSaysWhatIsAFavourite) {
    star(client_, false, {ids_[0]});
    const auto listed = client_.post("/files/list", R"({"parentFileId":")" + folder_ + "\"}").object();
    EXPECT_TRUE(listed.at("files").at(0).at("favorite").as_bool());
    EXPECT_FALSE(listed.at("files").at(1).at("favorite").as_bool());
    const auto found = client_.post("/files/search", R"({"filter":{"keyWord":"c"}})").object();
    EXPECT_TRUE(found.at("files").at(0).at("favorite").as_bool());
    const auto accesses = client_.get("/access").object();
    for (const auto& access : accesses.at("list").as_array()) {
        const auto& file = access.at("file").as_object();
        EXPECT_EQ(file.at("favorite").as_bool(), textOf(file, "name") != "b");
    }
}

TEST_F(FavouritesTest, AnEntryThatIsRefusedSaysSo) {
    const auto some = star(client_, true, {ids_[0], "none", "", "root"}).object();
    EXPECT_EQ(some.at("status").as_int64(), 1);
    const auto& entries = some.at("subResponseList").as_array();
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(json::serialize(entries[0]),
              R"({"fileId":")" + ids_[0] + R"(","code":"0","message":"success"})");
    EXPECT_EQ(textOf(entries[1].as_object(), "code"), "13000404");
    EXPECT_THAT(textOf(entries[1].as_object(), "message"), StartsWith("there is no file or folder \"none\""));
    EXPECT_EQ(textOf(entries[2].as_object(), "code"), "13000400");
    EXPECT_EQ(textOf(entries[3].as_object(), "code"), "13000403");
    EXPECT_EQ(star(client_, true, {"none", "root"}).object().at("status").as_int64(), 2);
    EXPECT_EQ(star(client_, true, {}).object().at("status").as_int64(), 0);
}

TEST_F(FavouritesTest, AnotherAccountsFilesAndContainersAreRefused) {
    const Client other(process_.url(), "other");
    const auto answer = star(other, true, {ids_[0]}).object();
    EXPECT_EQ(answer.at("status").as_int64(), 2);
    EXPECT_EQ(textOf(answer.at("subResponseList").at(0).as_object(), "code"), "13000404");
    EXPECT_THAT(favourites(other), IsEmpty());
    const auto own = other.upload("own", "x");
    const auto foreign =
        other.post("/star/batch", R"({"starred":true,"subRequestList":[{"fileId":")" + own +
                                      R"(","containerId":")" + client_.container() + "\"}]}");
    EXPECT_EQ(textOf(foreign.object().at("subResponseList").at(0).as_object(), "code"), "13000403");
}

TEST_F(FavouritesTest, ABatchThatMakesNoSenseIsRefused) {
    expectRefused(client_.post("/star/batch", R"({"subRequestList":[]})"), 400, "starred");
    expectRefused(client_.post("/star/batch", R"({"starred":true})"), 400, "subRequestList");
    expectRefused(client_.post("/star/batch", R"({"starred":1,"subRequestList":[]})"), 400, "starred");
    expectRefused(client_.post("/star/batch", R"({"starred":true,"subRequestList":[{"fileId":1}]})"), 400,
                  "subRequestList[0].fileId");
}

TEST(FavouritesPersistenceTest, AFavouriteIsOneAfterAKill) {
    QuillboxdProcess process;
    const Client client(process.url());
    star(client, true, {client.upload("a", "x")});
    process.kill();
    process.start();
    EXPECT_THAT(favourites(client), ElementsAre("a"));
}

}  // namespace
}  // namespace quillboxd_test::favourites
