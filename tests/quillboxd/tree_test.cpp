#include <map>

#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class TreeTest : public ServiceTest {
  protected:
    HttpAnswer makeDirectory(json::object body) const {
        return client_.post("/directory", json::serialize(body));
    }
    HttpAnswer rename(const std::string& id, const json::object& body) const {
        return client_.post("/files/rename/" + id, json::serialize(body));
    }
    HttpAnswer search(const json::object& body) const {
        return client_.post("/files/search", json::serialize(body));
    }
    std::vector<std::string> found(const json::object& body) const { return namesOf(search(body)); }
    HttpAnswer list(const json::object& body) const {
        return client_.post("/files/list", json::serialize(body));
    }

    static std::vector<std::string> namesOf(const HttpAnswer& answer) {
        EXPECT_EQ(answer.status, 200) << answer.body;
        std::vector<std::string> names;
        const auto object = answer.object();
        for (const auto& file : object.at("files").as_array()) {
            names.push_back(textOf(file.as_object(), "fileName"));
        }
        return names;
    }
};

TEST_F(TreeTest, AFolderIsMadeUnderItsParent) {
    const auto answer =
        makeDirectory({{"fileName", "photos"}, {"fileType", "10"}, {"parentFolder", {""}}}).object();
    EXPECT_EQ(answer.at("code").as_int64(), 0);
    EXPECT_EQ(textOf(answer, "fileName"), "photos");
    const auto id = textOf(answer, "id");
    client_.makeFolder("2026", id);
    EXPECT_THAT(client_.names(), ElementsAre("photos"));
    EXPECT_THAT(client_.names(id), ElementsAre("2026"));
}

TEST_F(TreeTest, Mode3ReportsTheFolderThatIsThere) {
    const auto id = client_.makeFolder("backup");
    const auto answer = makeDirectory({{"fileName", "backup"}, {"renameMode", 3}});
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.object().at("code").as_int64(), 13000405);
    EXPECT_EQ(textOf(answer.object(), "existFileId"), id);
    EXPECT_EQ(textOf(answer.object(), "id"), "");
    EXPECT_THAT(client_.names(), ElementsAre("backup"));
}

TEST_F(TreeTest, Mode3DoesNotTakeAFileForAFolder) {
    client_.upload("backup", "a file");
    const auto answer = makeDirectory({{"fileName", "backup"}, {"renameMode", 3}});
    expectRefused(answer, 409, "is taken");
    EXPECT_EQ(answer.object().at("code").as_int64(), 13000405);
}

TEST_F(TreeTest, Modes2And4GiveAFreeNameAndMode1Refuses) {
    client_.makeFolder("a.b");
    EXPECT_EQ(textOf(makeDirectory({{"fileName", "a.b"}, {"renameMode", 2}}).object(), "fileName"),
              "a.b (1)");
    EXPECT_EQ(textOf(makeDirectory({{"fileName", "a.b"}, {"renameMode", 4}}).object(), "fileName"),
              "a.b (2)");
    EXPECT_EQ(textOf(makeDirectory({{"fileName", "a.b"}}).object(), "fileName"), "a.b (3)");
    expectRefused(makeDirectory({{"fileName", "a.b"}, {"renameMode", 1}}), 409, "is taken");
    expectRefused(makeDirectory({{"fileName", "a.b"}, {"renameMode", 0}}), 400, "renameMode");
}

TEST_F(TreeTest, EveryFieldOfADirectoryHasItsType) {
    for (const char* key :
         {"createdTime", "description", "mimeType", "editedTime", "fileType", "containerId", "scene"}) {
        expectRefused(makeDirectory({{"fileName", "x"}, {key, 1}}), 400,
                      std::string("\"") + key + "\" must be a text");
    }
    expectRefused(makeDirectory({{"fileName", "x"}, {"hidden", "false"}}), 400, "hidden");
    expectRefused(makeDirectory({{"fileName", "x"}, {"renameMode", "2"}}), 400, "renameMode");
    expectRefused(makeDirectory({{"fileName", "x"}, {"smartFolderAttr", {{{"type", "1"}}}}}), 400,
                  "smartFolderAttr[0].type");
    expectRefused(makeDirectory({{"fileName", "x"}, {"parentFolder", {"404"}}}), 404, "404");
    expectRefused(makeDirectory({{"fileName", 1}}), 400, "\"fileName\" must be a text");
    expectRefused(makeDirectory({}), 400, "fileName");
    EXPECT_EQ(makeDirectory({{"fileName", "x"}, {"scene", nullptr}, {"unknown", {1, 2}}}).status, 200);
}

TEST_F(TreeTest, AListHasFoldersFirstThenNames) {
    client_.upload("b", "2");
    client_.upload("a", "1");
    client_.makeFolder("z");
    client_.makeFolder("y");
    EXPECT_THAT(client_.names(), ElementsAre("y", "z", "a", "b"));
    EXPECT_THAT(namesOf(list({{"sortInfo", {{"sortType", 1}, {"sortDirection", 1}}}})),
                ElementsAre("z", "y", "b", "a"));
}

TEST_F(TreeTest, AListCanBeSortedBySize) {
    client_.upload("large", "12345");
    client_.upload("small", "1");
    client_.upload("middle", "123");
    EXPECT_THAT(namesOf(list({{"sortInfo", {{"sortType", 3}}}})), ElementsAre("small", "middle", "large"));
    EXPECT_THAT(namesOf(list({{"sortInfo", {{"sortType", 3}, {"sortDirection", 1}}}})),
                ElementsAre("large", "middle", "small"));
}

TEST_F(TreeTest, AnEntryOfAListSaysWhatTheFileIs) {
    const auto id = client_.upload("notes.txt", "hello");
    const auto answer = list({{"type", "list"}}).object();
    EXPECT_TRUE(answer.at("searchCompleted").as_bool());
    EXPECT_FALSE(answer.contains("nextCursor"));
    const auto& file = answer.at("files").at(0).as_object();
    EXPECT_EQ(textOf(file, "id"), id);
    EXPECT_EQ(textOf(file, "sha256"), sha256Hex("hello"));
    EXPECT_EQ(textOf(file, "fileSuffix"), "txt");
    EXPECT_EQ(file.at("size").as_int64(), 5);
    EXPECT_EQ(json::serialize(file.at("parentFolder")), R"(["root"])");
    EXPECT_FALSE(textOf(file, "createdTime").empty());
}

TEST_F(TreeTest, PagesFollowEachOtherWithoutGapInEveryOrder) {
    for (int i = 0; i < 7; ++i)
        client_.upload("file" + std::to_string(i),
                       std::string(static_cast<std::size_t>(i % 3), 'x') + std::to_string(i));
    for (int i = 0; i < 3; ++i) client_.makeFolder("folder" + std::to_string(i));
    for (const int sortType : {1, 2, 3, 4}) {
        for (const int direction : {0, 1}) {
            const json::object sortInfo{{"sortType", sortType}, {"sortDirection", direction}};
            const auto whole = namesOf(list({{"sortInfo", sortInfo}}));
            std::vector<std::string> paged;
            std::string cursor;
            do {
                const auto page =
                    list({{"sortInfo", sortInfo}, {"pageInfo", {{"pageSize", 3}, {"pageCursor", cursor}}}});
                const auto names = namesOf(page);
                paged.insert(paged.end(), names.begin(), names.end());
                const auto object = page.object();
                cursor = object.contains("nextCursor") ? textOf(object, "nextCursor") : "";
                EXPECT_EQ(object.at("searchCompleted").as_bool(), cursor.empty());
            } while (!cursor.empty() && paged.size() < 100);
            EXPECT_EQ(paged, whole) << "sortType " << sortType << ", direction " << direction;
            EXPECT_EQ(whole.size(), 10u);
        }
    }
}

TEST_F(TreeTest, APageStandsWhereItStoodWhenItemsComeInBetween) {
    for (const char* name : {"b", "d", "f"}) client_.makeFolder(name);
    const auto first = list({{"pageInfo", {{"pageSize", 2}}}});
    EXPECT_THAT(namesOf(first), ElementsAre("b", "d"));
    client_.makeFolder("a");
    client_.makeFolder("e");
    const auto cursor = textOf(first.object(), "nextCursor");
    EXPECT_THAT(namesOf(list({{"pageInfo", {{"pageSize", 2}, {"pageCursor", cursor}}}})),
                ElementsAre("e", "f"));
}

TEST_F(TreeTest, ABrokenPageRequestIsRefused) {
    expectRefused(list({{"pageInfo", json::object()}}), 400, "pageSize");
    expectRefused(list({{"pageInfo", {{"pageSize", 0}}}}), 400, "pageSize");
    expectRefused(list({{"pageInfo", {{"pageSize", "10"}}}}), 400, "pageInfo.pageSize");
    for (const char* cursor : {"x", "[]", "[1,2,3]", "[true,5,6]", "{}", "[true,\"a\",1"}) {
        expectRefused(list({{"pageInfo", {{"pageSize", 1}, {"pageCursor", cursor}}}}), 400, "cursor");
    }
    expectRefused(list({{"sortInfo", {{"sortType", "1"}}}}), 400, "sortInfo.sortType");
}

TEST_F(TreeTest, TheKindOfAListIsAnyTextAndItsFolderMustExist) {
    EXPECT_EQ(client_.post("/files/anything%20at-all", "{}").status, 200);
    EXPECT_EQ(textOf(client_.post("/files/recent", "{}").object(), "category"), "recent");
    expectRefused(list({{"parentFileId", "99"}}), 404, "99");
    expectRefused(list({{"parentFileId", "not a number"}}), 404, "not a number");
    const auto file = client_.upload("file", "bytes");
    expectRefused(list({{"parentFileId", file}}), 400, "not a folder");
}

TEST_F(TreeTest, HiddenAndOtherTypesAreLeftOut) {
    makeDirectory({{"fileName", "hidden"}, {"hidden", true}});
    client_.makeFolder("shown");
    client_.upload("file", "bytes");
    EXPECT_THAT(namesOf(list(json::object())), ElementsAre("shown", "file"));
    EXPECT_THAT(namesOf(list({{"hidden", true}})), ElementsAre("hidden", "shown", "file"));
    EXPECT_THAT(namesOf(list({{"fileType", "45"}})), ElementsAre("file"));
    EXPECT_THAT(namesOf(list({{"fileType", "10"}})), ElementsAre("shown"));
}

TEST_F(TreeTest, ARenameChangesTheName) {
    const auto id = client_.upload("old.txt", "bytes");
    EXPECT_EQ(rename(id, {{"fileId", id}, {"name", "new.txt"}, {"renameMode", 2}}).status, 200);
    EXPECT_THAT(client_.names(), ElementsAre("new.txt"));
    EXPECT_EQ(rename(id, {{"name", "new.txt"}, {"renameMode", 1}}).status, 200);
}

TEST_F(TreeTest, ARenameToATakenNameFollowsItsMode) {
    const auto id = client_.upload("a.txt", "a");
    client_.upload("b.txt", "b");
    expectRefused(rename(id, {{"name", "b.txt"}, {"renameMode", 1}}), 409, "is taken");
    expectRefused(rename(id, {{"name", "b.txt"}, {"renameMode", 3}}), 409, "is taken");
    EXPECT_EQ(rename(id, {{"name", "b.txt"}, {"renameMode", 2}}).status, 200);
    EXPECT_THAT(client_.names(), UnorderedElementsAre("b.txt", "b (1).txt"));
}

TEST_F(TreeTest, ABrokenRenameIsRefused) {
    const auto id = client_.upload("a.txt", "a");
    expectRefused(rename(id, json::object()), 400, "name");
    expectRefused(rename(id, {{"name", "a/b"}}), 400, "slash");
    expectRefused(rename(id, {{"name", 5}}), 400, "name");
    expectRefused(rename("5", {{"name", "x"}}), 404, "5");
    expectRefused(rename("root", {{"name", "x"}}), 403, "root");
}

TEST_F(TreeTest, ASearchFindsPartsOfNamesInAnyCase) {
    const auto folder = client_.makeFolder("Holidays");
    client_.upload("holiday plan.txt", "1");
    client_.upload("Übung.txt", "2", 64, folder);
    client_.upload("other", "3", 64, folder);
    EXPECT_THAT(found({{"filter", {{"keyWord", "HOLIDAY"}}}}), ElementsAre("Holidays", "holiday plan.txt"));
    EXPECT_THAT(found({{"filter", {{"keyWord", "übung"}}}}), ElementsAre("Übung.txt"));
    EXPECT_THAT(found({{"filter", {{"keyWord", "100%"}}}}), IsEmpty());
}

TEST_F(TreeTest, ASearchCanStayInAFolder) {
    const auto outer = client_.makeFolder("outer");
    const auto inner = client_.makeFolder("inner", outer);
    client_.upload("file 0", "0");
    client_.upload("file 1", "1", 64, outer);
    client_.upload("file 2", "2", 64, inner);
    EXPECT_THAT(found({{"filter", {{"keyWord", "file"}}}}), ElementsAre("file 0", "file 1", "file 2"));
    EXPECT_THAT(found({{"filter", {{"keyWord", "file"}, {"parentFolder", outer}}}}), ElementsAre("file 1"));
    EXPECT_THAT(found({{"recursived", true}, {"filter", {{"keyWord", "file"}, {"parentFolder", outer}}}}),
                ElementsAre("file 1", "file 2"));
    EXPECT_THAT(found({{"filter", {{"keyWord", "file"}, {"parentFolder", "root"}}}}), ElementsAre("file 0"));
    EXPECT_THAT(found({{"recursived", true}, {"filter", {{"parentFolder", "root"}, {"fileType", "10"}}}}),
                ElementsAre("inner", "outer"));
    EXPECT_THAT(found({{"recycled", true}}), IsEmpty());
}

TEST_F(TreeTest, ASearchAnswersInPagesWithATotal) {
    for (int i = 0; i < 5; ++i) client_.upload("file " + std::to_string(i), std::to_string(i));
    const auto first = search({{"filter", {{"keyWord", "file"}}}, {"pageInfo", {{"pageSize", 3}}}});
    EXPECT_EQ(namesOf(first).size(), 3u);
    EXPECT_EQ(first.object().at("total").as_int64(), 5);
    const auto cursor = textOf(first.object(), "nextPageCursor");
    const auto second =
        search({{"filter", {{"keyWord", "file"}}}, {"pageInfo", {{"pageSize", 3}, {"pageCursor", cursor}}}});
    EXPECT_THAT(namesOf(second), ElementsAre("file 3", "file 4"));
    EXPECT_FALSE(second.object().contains("nextPageCursor"));
}

TEST_F(TreeTest, AFoundFileHasItsSizeAsTextAndItsPaths) {
    const auto folder = client_.makeFolder("folder");
    const auto id = client_.upload("file", "12345", 64, folder);
    const auto answer = search({{"filter", {{"keyWord", "file"}}}}).object();
    const auto& file = answer.at("files").at(0).as_object();
    EXPECT_EQ(textOf(file, "size"), "5");
    EXPECT_EQ(textOf(file, "namePath"), "/folder/file");
    EXPECT_EQ(textOf(file, "idPath"), "/" + folder + "/" + id);
}

TEST_F(TreeTest, EveryFieldOfASearchHasItsType) {
    expectRefused(search({{"searchType", 1}}), 400, "searchType");
    expectRefused(search({{"recycled", "no"}}), 400, "recycled");
    expectRefused(search({{"filter", {{"keyWord", 1}}}}), 400, "filter.keyWord");
    expectRefused(search({{"filter", "text"}}), 400, "\"filter\" must be an object");
    expectRefused(search({{"sortInfo", {{"sortType", 1}}}}), 400, "sortInfo.sortType");
    expectRefused(search({{"filter", {{"parentFolder", "77"}}}}), 404, "77");
}

TEST_F(TreeTest, APathLeadsFromTheRootToTheFile) {
    const auto outer = client_.makeFolder("outer");
    const auto inner = client_.makeFolder("inner", outer);
    const auto file = client_.upload("file", "x", 64, inner);
    const auto answer =
        client_.get("/files/path?fileId=" + file + "&containerId=" + client_.container()).object();
    EXPECT_EQ(textOf(answer, "namePath"), "/outer/inner/file");
    EXPECT_EQ(textOf(answer, "fileIdPath"), "/" + outer + "/" + inner + "/" + file);
    EXPECT_EQ(textOf(client_.get("/files/path").object(), "namePath"), "/");
    expectRefused(client_.get("/files/path?fileId=1"), 404, "1");
    expectRefused(client_.get("/files/path?containerId=1"), 403, "container");
}

TEST_F(TreeTest, StatisticsCountInTextsWithAndWithoutTheFoldersBelow) {
    const auto outer = client_.makeFolder("outer");
    const auto inner = client_.makeFolder("inner", outer);
    client_.upload("a", "123", 64, outer);
    client_.upload("b", "12345", 64, inner);
    const auto stats = [&](const std::string& query) {
        return json::serialize(client_.get("/files/statsDir?" + query).object().at("data"));
    };
    EXPECT_EQ(stats("fileId=" + outer + "&recursive=true"),
              R"({"totalSize":"8","subDirCount":"1","subFileCount":"2"})");
    EXPECT_EQ(stats("fileId=" + outer + "&recursive=false"),
              R"({"totalSize":"3","subDirCount":"1","subFileCount":"1"})");
    EXPECT_EQ(stats("recursive=true"), R"({"totalSize":"8","subDirCount":"2","subFileCount":"2"})");
    expectRefused(client_.get("/files/statsDir?recursive=perhaps"), 400, "recursive");
}

TEST_F(TreeTest, ADetailSaysEverythingAboutAFile) {
    const auto folder = client_.makeFolder("folder");
    const auto id = client_.upload("notes.txt", "hello", 64, folder);
    const auto detail = client_.post("/files/" + id + "/detail", R"({"fileId":")" + id + "\"}").object();
    EXPECT_EQ(textOf(detail, "id"), id);
    EXPECT_EQ(textOf(detail, "fileName"), "notes.txt");
    EXPECT_EQ(textOf(detail, "sha256"), sha256Hex("hello"));
    EXPECT_EQ(detail.at("size").as_int64(), 5);
    EXPECT_EQ(json::serialize(detail.at("parentFolder")), "[\"" + folder + "\"]");
    const auto& link = detail.at("downloadLinks").at(0).as_object();
    EXPECT_EQ(textOf(link, "usage"), "content");
    EXPECT_EQ(send("GET", textOf(link, "downloadLink")).body, "hello");
    EXPECT_FALSE(client_.post("/files/" + folder + "/detail", "{}").object().contains("downloadLinks"));
    EXPECT_EQ(client_.post("/files/root/detail", "{}").status, 200);
    expectRefused(client_.post("/files/17/detail", "{}"), 404, "17");
    expectRefused(client_.post("/files/" + id + "/detail", R"({"fileId":1})"), 400, "fileId");
}

TEST_F(TreeTest, ABatchOfDownloadAddressesAnswersForEachFile) {
    const auto id = client_.upload("a.txt", "hello");
    const auto folder = client_.makeFolder("folder");
    const auto answer =
        client_.post("/files/download", json::serialize(json::object{{"fileIds", {id, "404", folder}}}))
            .object();
    EXPECT_EQ(answer.at("code").as_int64(), 0);
    EXPECT_NE(answer.at("batchCode").as_int64(), 0);
    const auto& downloads = answer.at("downloads").as_array();
    ASSERT_EQ(downloads.size(), 3u);
    EXPECT_EQ(textOf(downloads[0].as_object(), "code"), "0");
    EXPECT_EQ(send("GET", textOf(downloads[0].as_object(), "url")).body, "hello");
    EXPECT_EQ(textOf(downloads[1].as_object(), "code"), "13000404");
    EXPECT_FALSE(downloads[1].as_object().contains("url"));
    EXPECT_NE(textOf(downloads[2].as_object(), "code"), "0");
    expectRefused(client_.post("/files/download", "{}"), 400, "fileIds");
    expectRefused(client_.post("/files/download", R"({"fileIds":[1]})"), 400, "fileIds");
}

TEST_F(TreeTest, APreviewShowsTheFileInTheViewer) {
    const auto id = client_.upload("a.txt", "hello");
    const auto link = textOf(client_.get("/files/preview/" + id + "/link").object(), "link");
    const auto shown = send("GET", link);
    EXPECT_EQ(shown.body, "hello");
    EXPECT_THAT(shown.header("content-disposition"), testing::StartsWith("inline"));
    expectRefused(client_.get("/files/preview/5/link"), 404, "5");
}

TEST_F(TreeTest, RecentAccessesNameTheLatestKindOfEachFile) {
    const auto uploaded = client_.upload("uploaded", "1");
    const auto downloaded = client_.upload("downloaded", "2");
    const auto viewed = client_.upload("viewed", "3");
    client_.download(downloaded);
    client_.post("/files/" + viewed + "/detail", "{}");
    std::map<std::string, std::int64_t> kinds;
    const auto accesses = client_.get("/access?imageProcess=").object();
    for (const auto& entry : accesses.at("list").as_array()) {
        EXPECT_FALSE(textOf(entry.as_object(), "operateTime").empty());
        kinds[textOf(entry.at("file").as_object(), "name")] = entry.at("operateType").as_int64();
    }
    EXPECT_THAT(kinds,
                ElementsAre(std::pair("downloaded", 2), std::pair("uploaded", 1), std::pair("viewed", 3)));
}

}  // namespace
}  // namespace quillboxd_test
