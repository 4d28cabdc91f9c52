#include "tests/quillboxd/share_client.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SharesTest : public ShareTest {
  protected:
    /// What an administrator makes of the owner's account; without a body it is deleted.
    void changeOwner(const std::string& id, const std::string& body) const {
        const Client administrator(process_.url(), "anna");
        const auto answer = send("DELETE", process_.url() + "/quillbox/ose/v1/users/" + id,
                                 {"Authorization: " + administrator.token()}, body);
        EXPECT_EQ(answer.status, 200) << answer.body;
    }
};

// ---- the owner's side

TEST_F(SharesTest, ALinkIsMadeWithItsAddress) {
    const auto link =
        share(R"("extractCode":"k3x9","comment":"for you","containerId":")" + owner_.container() + "\"");
    EXPECT_EQ(textOf(link, "linkUrl"), process_.url() + "/s/" + shortUrlOf(link));
    EXPECT_EQ(textOf(link, "extractCode"), "k3x9");
    EXPECT_EQ(textOf(link, "comment"), "for you");
    EXPECT_FALSE(link.contains("expireTime"));
    EXPECT_NE(shortUrlOf(link), shortUrlOf(share()));
}

TEST_F(SharesTest, ALinkIsToldInDetail) {
    const auto link = detail(idOf(share(R"("extractCode":"k")")));
    EXPECT_EQ(textOf(link, "displayName"), "a.txt");
    EXPECT_EQ(textOf(link, "extractCode"), "k");
    EXPECT_EQ(link.at("scope"), 0);
    EXPECT_EQ(link.at("status"), 0);
    EXPECT_EQ(json::serialize(link.at("permission")), R"({"preview":true,"edit":false,"download":true})");
    for (const auto* list : {"depts", "groups", "users"}) EXPECT_THAT(link.at(list).as_array(), IsEmpty());
}

TEST_F(SharesTest, APermissionGrantsOnlyWhatItSays) {
    const auto id = idOf(share(R"("permission":{"edit":true})"));
    EXPECT_EQ(json::serialize(detail(id).at("permission")),
              R"({"preview":false,"edit":true,"download":false})");
    modify(id, R"({"permission":{"preview":true}})");
    EXPECT_EQ(json::serialize(detail(id).at("permission")),
              R"({"preview":true,"edit":false,"download":false})");
}

TEST_F(SharesTest, WhatCannotBeSharedIsRefused) {
    const std::string file = R"("fileIds":[")" + file_ + "\"]";
    expectRefused(askForShare(""), 400, "fileIds");
    expectRefused(askForShare(R"("fileIds":[])"), 400, "fileIds");
    expectRefused(askForShare(R"("fileIds":["12"])"), 404, "no file or folder \"12\"");
    expectRefused(askForShare(R"("fileIds":["root"])"), 403, "root");
    expectRefused(other_.post("/share", "{" + file + "}"), 404, file_);
    expectRefused(askForShare(file + R"(,"containerId":")" + other_.container() + "\""), 403, "container");
    expectRefused(askForShare(file + R"(,"scope":2)"), 400, "scope");
    expectRefused(askForShare(file + R"(,"scope":"0")"), 400, "scope");
    expectRefused(askForShare(file + R"(,"permission":{"edit":1})"), 400, "permission.edit");
    expectRefused(askForShare(file + R"(,"extractCode":")" + std::string(65, 'x') + "\""), 400,
                  "extractCode");
    EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(SharesTest, TheEndOfALinkIsATimeOrANumberOfDays) {
    const auto link = share(R"("expireTime":"2199-01-02T03:04:05Z")");
    EXPECT_EQ(textOf(link, "expireTime"), "2199-01-02T03:04:05.000Z");
    EXPECT_TRUE(textOf(share(R"("validDays":1,"expiredType":"x")"), "expireTime").starts_with("20"));
    const auto with = [&](const std::string& more) {
        return askForShare(R"("fileIds":[")" + file_ + "\"]," + more);
    };
    expectRefused(with(R"("expireTime":"tomorrow")"), 400, "expireTime");
    expectRefused(with(R"("expireTime":"2001-01-02T03:04:05Z")"), 400, "past");
    expectRefused(with(R"("validDays":0)"), 400, "validDays");
    expectRefused(with(R"("validDays":1,"expireTime":"2199-01-02T03:04:05Z")"), 400, "validDays");
}

TEST_F(SharesTest, AChangeKeepsWhatItDoesNotName) {
    const auto id = idOf(share(R"("extractCode":"old","comment":"c","validDays":3)"));
    const auto changed = linkOf(modify(id, R"({"shareId":")" + id + R"(","extractCode":"new"})"));
    EXPECT_EQ(textOf(changed, "extractCode"), "new");
    EXPECT_EQ(textOf(changed, "comment"), "c");
    EXPECT_TRUE(changed.contains("expireTime"));
    EXPECT_EQ(textOf(changed, "createTime"), textOf(changed, "shareTime"));
    EXPECT_GE(textOf(changed, "updateTime"), textOf(changed, "createTime"));
    const auto open = linkOf(modify(id, R"({"extractCode":"","expireTime":""})"));
    EXPECT_FALSE(open.contains("extractCode"));
    EXPECT_FALSE(open.contains("expireTime"));
}

TEST_F(SharesTest, ALinkOfAnotherAccountIsNotThere) {
    const auto id = idOf(share());
    expectRefused(other_.get("/share/" + id), 404, "no share");
    expectRefused(put(other_, "/share/" + id, "{}"), 404, "no share");
    expectRefused(other_.get("/share/x"), 404, "no share");
    expectRefused(modify(id, R"({"shareId":"12"})"), 400, "shareId");
    const auto answer = other_.post("/share/cancel", R"({"shareIds":[")" + id + "\"]}").object();
    EXPECT_EQ(answer.at("subResponseList").at(0).at("code"), 13000404);
    EXPECT_EQ(detail(id).at("status"), 0);
}

TEST_F(SharesTest, LinksAreCancelledOneByOne) {
    const auto first = share();
    const auto second = share();
    const auto answer = cancel("[\"" + idOf(first) + "\",\"999\",\"x\"]").object();
    const auto& list = answer.at("subResponseList").as_array();
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(json::serialize(list[0]), R"({"shareId":")" + idOf(first) + R"(","code":0,"msg":"success"})");
    EXPECT_EQ(list[1].at("code"), 13000404);
    EXPECT_EQ(list[2].at("code"), 13000404);
    expectRefused(visit(first), 404, "no link");
    EXPECT_EQ(visit(second).status, 200);
    EXPECT_THAT(cancel("[]").object().at("subResponseList").as_array(), IsEmpty());
    expectRefused(owner_.post("/share/cancel", "{}"), 400, "shareIds");
    expectRefused(cancel("[1]"), 400, "list of texts");
}

// ---- the list

TEST_F(SharesTest, TheNewestLinkStandsFirst) {
    owner_.upload("b.txt", "world");
    share();
    linkOf(askForShare(R"("fileIds":[")" + folder_ + "\",\"" + file_ + "\"]"));
    EXPECT_THAT(listed(), ElementsAre("folder and 1 more", "a.txt"));
    EXPECT_THAT(listed("?sortType=1"), ElementsAre("a.txt", "folder and 1 more"));
    EXPECT_THAT(listed("?sortType=1&sortDirection=1"), ElementsAre("folder and 1 more", "a.txt"));
    EXPECT_THAT(listed("?sortType=2&sortDirection=2"), ElementsAre("a.txt", "folder and 1 more"));
    EXPECT_THAT(listed("?displayName=FOLD"), ElementsAre("folder and 1 more"));
    EXPECT_THAT(column(other_.get("/share"), "shareLinks", "displayName"), IsEmpty());
}

TEST_F(SharesTest, AListedLinkNamesItsFilesAndCounts) {
    const auto link = share();
    visit(link, R"("refreshCount":true)");
    const auto answer = owner_.get("/share").object();
    const auto& listed = answer.at("shareLinks").at(0).as_object();
    EXPECT_EQ(listed.at("viewCnt"), 1);
    EXPECT_EQ(listed.at("downloadCnt"), 0);
    EXPECT_EQ(listed.at("saveCnt"), 0);
    EXPECT_EQ(textOf(listed, "containerId"), owner_.container());
    EXPECT_EQ(textOf(listed, "containerName"), "owner");
    const auto& file = listed.at("files").at(0).as_object();
    EXPECT_EQ(textOf(file, "id"), file_);
    EXPECT_EQ(file.at("size"), 5);
    EXPECT_EQ(file.at("recycled"), false);
    EXPECT_EQ(textOf(file, "fileSuffix"), "txt");
}

TEST_F(SharesTest, AListedLinkShowsTenOfItsFiles) {
    std::string ids = "\"" + file_ + "\"";
    for (char name = 'b'; name <= 'k'; ++name)
        ids += ",\"" + owner_.upload(std::string(1, name), std::string(1, name)) + "\"";
    const auto link = linkOf(askForShare("\"fileIds\":[" + ids + "]"));
    EXPECT_EQ(owner_.get("/share").object().at("shareLinks").at(0).at("files").as_array().size(), 10U);
    EXPECT_EQ(visit(link).object().at("files").as_array().size(), 11U);
}

TEST_F(SharesTest, TheListComesInPages) {
    for (int i = 0; i < 5; ++i) share(R"("comment":")" + std::to_string(i) + "\"");
    std::vector<std::string> comments;
    std::string query = "?pageSize=2";
    for (int page = 0; page < 3; ++page) {
        const auto answer = owner_.get("/share" + query);
        for (const auto& comment : column(answer, "shareLinks", "comment")) comments.push_back(comment);
        const auto object = answer.object();
        EXPECT_EQ(object.contains("nextCursor"), page < 2);
        if (page < 2) query = "?pageSize=2&pageCursor=" + textOf(object, "nextCursor");
        share();  // what comes in between shifts nothing
    }
    EXPECT_THAT(comments, ElementsAre("4", "3", "2", "1", "0"));
    expectRefused(owner_.get("/share?pageSize=0"), 400, "pageSize");
    expectRefused(owner_.get("/share?pageSize=x"), 400, "pageSize");
    expectRefused(owner_.get("/share?pageCursor=x"), 400, "cursor");
}

TEST_F(SharesTest, TheListByNameComesInPages) {
    // Two links have the same name, and one a name that a query does not take as it stands.
    const auto odd = owner_.upload("b & \"c\" \u00e9.txt", "odd");
    share();
    share();
    linkOf(askForShare(R"("fileIds":[")" + odd + "\"]"));
    linkOf(askForShare(R"("fileIds":[")" + folder_ + "\"]"));
    const auto inPages = [&](const std::string& order) {
        std::vector<std::string> names;
        std::string cursor;
        do {
            const auto answer = owner_.get("/share?pageSize=1&sortType=1" + order + "&pageCursor=" + cursor);
            for (const auto& name : column(answer, "shareLinks", "displayName")) names.push_back(name);
            const auto object = answer.object();
            cursor = object.contains("nextCursor") ? textOf(object, "nextCursor") : "";
        } while (!cursor.empty() && names.size() < 10);
        return names;
    };
    EXPECT_THAT(inPages(""), ElementsAre("a.txt", "a.txt", "b & \"c\" \u00e9.txt", "folder"));
    EXPECT_THAT(inPages("&sortDirection=1"), ElementsAre("folder", "b & \"c\" \u00e9.txt", "a.txt", "a.txt"));
}

// ---- the visitor's side

TEST_F(SharesTest, AVisitorSeesTheFilesAndWhoSharesThem) {
    const auto link = share(R"("expireTime":"2199-01-02T03:04:05Z")");
    const auto answer = visit(link).object();
    const auto& file = answer.at("files").at(0).as_object();
    EXPECT_EQ(textOf(file, "id"), file_);
    EXPECT_EQ(textOf(file, "fileName"), "a.txt");
    EXPECT_EQ(file.at("size"), 5);
    EXPECT_FALSE(file.contains("parentFolder"));
    const auto& seen = answer.at("link").as_object();
    EXPECT_EQ(textOf(seen, "shareId"), idOf(link));
    EXPECT_EQ(textOf(seen, "ownerName"), "owner");
    EXPECT_EQ(textOf(seen, "ownerId"), userId("owner"));
    EXPECT_EQ(textOf(seen, "permission"), "READ");
    EXPECT_EQ(textOf(seen, "expireDate"), "2199-01-02");
}

TEST_F(SharesTest, TheLinkSaysWhoMayDoWhat) {
    const auto permission = [](const HttpAnswer& answer) {
        return textOf(answer.object().at("link").as_object(), "permission");
    };
    const auto link = share(R"("permission":{"preview":true,"edit":true})");
    EXPECT_EQ(permission(visit(link)), "WRITE");
    EXPECT_EQ(permission(visitAs(other_, link)), "WRITE");
    EXPECT_EQ(permission(visitAs(owner_, link)), "ADMIN");
}

TEST_F(SharesTest, AVisitorNeedsTheExtractCode) {
    const auto link = share(R"("extractCode":"k 3")");
    expectRefused(visit(link), 403, "asks for its extract code");
    expectRefused(visit(link, R"("qbstoken":"K 3")"), 403, "wrong");
    EXPECT_EQ(visit(link, R"("qbstoken":"k 3")").status, 200);
    expectRefused(visitAs(other_, link), 403, "asks for its extract code");
    EXPECT_EQ(visitAs(owner_, link).status, 200);
    modify(idOf(link), R"({"extractCode":"new"})");
    expectRefused(visit(link, R"("qbstoken":"k 3")"), 403, "wrong");
}

TEST_F(SharesTest, AnExpiredLinkOpensNoMore) {
    const auto link = share(R"("validDays":1)");
    const auto address = this->address(link, "content");
    expireLinks();
    expectRefused(visit(link), 403, "expired");
    expectRefused(send("GET", address), 403, "expired");
    EXPECT_EQ(detail(idOf(link)).at("status"), 1);
    modify(idOf(link), R"({"validDays":2})");
    EXPECT_EQ(visit(link).status, 200);
}

TEST_F(SharesTest, TheLinksOfASuspendedUserOpenAgainWithTheirAccount) {
    const auto link = share();
    const auto content = address(link, "content");
    const auto owner = userId("owner");
    changeOwner(owner, R"({"status":1})");
    expectRefused(visit(link), 403, "suspended");
    expectRefused(send("GET", content), 403, "suspended");
    EXPECT_EQ(send("GET", textOf(link, "linkUrl")).status, 403);
    changeOwner(owner, R"({"status":0})");
    EXPECT_EQ(visit(link).status, 200);
    EXPECT_EQ(send("GET", content).body, "hello");
}

TEST_F(SharesTest, TheLinksOfADeletedUserOpenNoMore) {
    const auto link = share();
    const auto content = address(link, "content");
    changeOwner(userId("owner"), "");
    expectRefused(visit(link), 404, "gone");
    expectRefused(visitAs(other_, link), 404, "gone");
    expectRefused(send("GET", content), 404, "gone");
}

TEST_F(SharesTest, ALinkForChosenPeopleOpensForThemAlone) {
    const auto link = share(R"("scope":1,"userIds":[")" + userId("other") + "\"]");
    EXPECT_EQ(visitAs(other_, link).status, 200);
    EXPECT_EQ(visitAs(owner_, link).status, 200);
    expectRefused(visit(link), 403, "chosen people");
    expectRefused(visitAs(Client(process_.url(), "carl"), link), 403, "chosen people");
    const auto users = detail(idOf(link)).at("users").as_array();
    EXPECT_EQ(json::serialize(users), R"([{"id":")" + userId("other") + R"(","name":"other"}])");
    modify(idOf(link), R"({"userIds":[")" + userId("carl") + "\"]}");
    expectRefused(visitAs(other_, link), 403, "chosen people");
}

TEST_F(SharesTest, ALinkForADepartmentOpensForThoseBelowItToo) {
    const auto link = share(R"("scope":1,"deptIds":["3"])");
    EXPECT_EQ(visitAs(Client(process_.url(), "dora"), link).status, 200);
    EXPECT_EQ(visitAs(Client(process_.url(), "emil"), link).status, 200)
        << "from the bindery, below the press";
    expectRefused(visitAs(Client(process_.url(), "ben"), link), 403, "chosen people");
    EXPECT_EQ(json::serialize(detail(idOf(link)).at("depts")), R"([{"id":"3","name":"Press"}])");
}

TEST_F(SharesTest, WhoIsChosenFitsTheScope) {
    const auto with = [&](const std::string& more) {
        return askForShare(R"("fileIds":[")" + file_ + "\"]," + more);
    };
    const auto chosen = "[\"" + userId("other") + "\"]";
    expectRefused(with(R"("scope":1)"), 400, "must name");
    expectRefused(with(R"("scope":1,"userIds":[])"), 400, "must name");
    expectRefused(with(R"("userIds":)" + chosen), 400, "scope 0");
    expectRefused(with(R"("scope":1,"userIds":["12"])"), 404, "no user \"12\"");
    expectRefused(with(R"("scope":1,"deptIds":["12"])"), 404, "no department \"12\"");
    expectRefused(with(R"("scope":1,"groupIds":["12"])"), 404, "no group \"12\"");
    const auto id = idOf(linkOf(with(R"("scope":1,"userIds":)" + chosen)));
    expectRefused(modify(id, R"({"userIds":[]})"), 400, "must name");
    EXPECT_EQ(detail(id).at("users").as_array().size(), 1U);
}

TEST_F(SharesTest, AVisitorWithAnUnknownTokenIsRefused) {
    const auto body = R"({"shortUrl":")" + shortUrlOf(share()) + "\"}";
    expectRefused(send("POST", process_.url() + "/quillbox/ose/v1/share/files", {"Authorization: x"}, body),
                  401, "unknown");
}

TEST_F(SharesTest, WhatAVisitorAsksForHasItsType) {
    const auto link = share();
    expectRefused(visit({{"shortUrl", "nothing"}}), 404, "no link \"nothing\"");
    expectRefused(visit({{"shortUrl", ""}}), 400, "shortUrl");
    expectRefused(visit(link, R"("pageSize":0)"), 400, "pageSize");
    expectRefused(visit(link, R"("refreshCount":1)"), 400, "refreshCount");
    expectRefused(visit(link, R"("qbstoken":1)"), 400, "qbstoken");
    expectRefused(visit(link, R"("pageCursor":"x")"), 400, "cursor");
}

// ---- folders

TEST_F(SharesTest, AVisitorWalksASharedFolder) {
    const auto inner = owner_.makeFolder("inner", folder_);
    const auto deep = owner_.upload("deep.txt", "deep", 1000, inner);
    owner_.upload("other.txt", "other", 1000, folder_);
    const auto link = linkOf(askForShare(R"("fileIds":[")" + folder_ + "\"]"));
    const auto names = [&](const std::string& more) {
        return column(visit(link, more), "files", "fileName");
    };
    EXPECT_THAT(names(""), ElementsAre("folder"));
    EXPECT_THAT(names(R"("parentFolder":")" + folder_ + "\""), ElementsAre("inner", "other.txt"));
    EXPECT_THAT(names(R"("sortType":1,"sortDirection":1,"parentFolder":")" + folder_ + "\""),
                ElementsAre("inner", "other.txt"));
    EXPECT_THAT(names(R"("fileName":"OTH","parentFolder":")" + folder_ + "\""), ElementsAre("other.txt"));
    const auto inside = visit(link, R"("parentFolder":")" + inner + "\"").object();
    EXPECT_EQ(textOf(inside.at("files").at(0).as_object(), "id"), deep);
    EXPECT_EQ(json::serialize(inside.at("files").at(0).at("parentFolder")), "[\"" + inner + "\"]");
    EXPECT_EQ(send("GET", address(link, "content", R"("parentFolder":")" + inner + "\"")).body, "deep");
}

TEST_F(SharesTest, WhatIsNotInTheLinkIsNotThere) {
    const auto link = linkOf(askForShare(R"("fileIds":[")" + folder_ + "\",\"" + file_ + "\"]"));
    const auto elsewhere = owner_.makeFolder("elsewhere");
    const auto folder = [&](const std::string& id) { return visit(link, R"("parentFolder":")" + id + "\""); };
    expectRefused(folder(elsewhere), 404, elsewhere);
    expectRefused(folder("root"), 404, "root");
    expectRefused(folder("x"), 404, "x");
    expectRefused(folder(file_), 400, "is a file");
    expectRefused(folder(other_.makeFolder("b")), 404, "holds no folder");
}

TEST_F(SharesTest, TheFilesOfALinkComeInPages) {
    for (const auto* name : {"1", "2", "3"}) owner_.upload(name, name, 1000, folder_);
    const auto link = linkOf(askForShare(R"("fileIds":[")" + folder_ + "\"]"));
    const auto in = R"("pageSize":2,"parentFolder":")" + folder_ + "\"";
    const auto first = visit(link, in);
    EXPECT_THAT(column(first, "files", "fileName"), ElementsAre("1", "2"));
    const auto cursor = json::serialize(first.object().at("nextCursor"));
    const auto rest = visit(link, in + R"(,"pageCursor":)" + cursor);
    EXPECT_THAT(column(rest, "files", "fileName"), ElementsAre("3"));
    EXPECT_FALSE(rest.object().contains("nextCursor"));
}

TEST_F(SharesTest, AHiddenFileInAFolderStaysHidden) {
    owner_.post("/directory", R"({"fileName":"hidden","hidden":true,"parentFolder":[")" + folder_ + "\"]}");
    const auto link = linkOf(askForShare(R"("fileIds":[")" + folder_ + "\"]"));
    EXPECT_THAT(column(visit(link, R"("parentFolder":")" + folder_ + "\""), "files", "fileName"), IsEmpty());
}

// ---- content

TEST_F(SharesTest, ADownloadThroughTheLinkIsCounted) {
    const auto link = share();
    const auto count = [&] { return linkOf(modify(idOf(link), "{}")).at("downloadCnt").as_int64(); };
    EXPECT_EQ(send("GET", address(link, "content")).body, "hello");
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(send("GET", address(link, "content"), {"Range: bytes=3-"}).body, "lo");
    EXPECT_EQ(send("HEAD", address(link, "content")).status, 200);
    const auto preview = send("GET", address(link, "preview"));
    EXPECT_EQ(preview.body, "hello");
    EXPECT_TRUE(preview.header("content-disposition").starts_with("inline"));
    EXPECT_EQ(count(), 1) << "a later part, a head and a look are no downloads";
    EXPECT_EQ(send("GET", address(link, "content"), {"Range: bytes=0-1"}).body, "he");
    EXPECT_EQ(count(), 2);
}

TEST_F(SharesTest, AVisitorLeavesNoTraceInTheOwnersAccesses) {
    const auto before = owner_.get("/access").object().at("list");
    send("GET", address(share(), "content"));
    EXPECT_EQ(owner_.get("/access").object().at("list").at(0).at("operateType"),
              before.at(0).at("operateType"));
}

TEST_F(SharesTest, AddressesAreGivenAsThePermissionSays) {
    const auto link = share(R"("permission":{"preview":true})");
    EXPECT_EQ(address(link, "content"), "");
    const auto preview = address(link, "preview");
    EXPECT_EQ(send("GET", preview).status, 200);
    modify(idOf(link), R"({"permission":{"download":true}})");
    expectRefused(send("GET", preview), 403, "no longer permits");
    EXPECT_EQ(send("GET", address(link, "content")).status, 200);
}

TEST_F(SharesTest, AnAddressEndsWithItsLink) {
    const auto link = share();
    const auto address = this->address(link, "content");
    auto forged = address;
    forged.replace(forged.find("/share/") + 7, 1, "9");
    expectRefused(send("GET", forged), 403, "signature");
    cancel("[\"" + idOf(link) + "\"]");
    expectRefused(send("GET", address), 404, "gone");
}

// ---- over time

TEST(SharesPersistenceTest, LinksAreThereAfterAKill) {
    QuillboxdProcess process;
    const Client owner(process.url(), "owner");
    const auto file = owner.upload("a.txt", "hello");
    const auto made = owner.post(
        "/share", R"({"fileIds":[")" + file + R"("],"extractCode":"k","comment":"c","validDays":9})");
    const auto id = textOf(made.object().at("shareLink").as_object(), "shareId");
    const auto before = owner.get("/share/" + id).body;
    process.kill();
    process.start();
    EXPECT_EQ(owner.get("/share/" + id).body, before);
}

TEST_F(SharesTest, AResetTakesTheLinksToo) {
    const auto link = share(R"("scope":1,"userIds":[")" + userId("other") + "\"]");
    EXPECT_EQ(send("POST", process_.url() + "/_dev/reset").status, 200);
    expectRefused(visit(link), 404, "no link");
}

}  // namespace
}  // namespace quillboxd_test
