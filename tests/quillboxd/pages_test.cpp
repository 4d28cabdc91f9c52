#include <future>
#include <thread>

#include "tests/quillboxd/backup_client.h"
#include "tests/quillboxd/html_page.h"

namespace quillboxd_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The beginning of a picture, which is all that the service looks at.
std::string pictureBytes(const std::string& rest = "") {
    return "\x89PNG\r\n\x1a\n and what makes it a picture " + rest;
}

class PagesTest : public BackupTest {
  protected:
    /// As a browser asks.
    HttpAnswer get(const std::string& path) const {
        return send("GET", process_.url() + path, {"Accept: text/html,*/*;q=0.8"});
    }
    std::string overview() const { return get("/").body; }
    /// The page behind a link of the overview.
    std::string follow(const std::string& page, const std::string& text) const {
        return get(linkOn(page, text)).body;
    }
    std::string rootFolder() const { return follow(overview(), "someone"); }
    HttpAnswer plan(const std::string& fault) const {
        return send("POST", process_.url() + "/_dev/faults", {}, fault);
    }
    /// Kind and time of the owner's last access: the addresses beside them are signed anew for each answer.
    std::pair<json::value, json::value> lastAccess() const {
        const auto answer = client_.get("/access").object();
        const auto& access = answer.at("list").at(0);
        return {access.at("operateType"), access.at("operateTime")};
    }
    json::array journal() const { return get("/_dev/requests").object().at("requests").as_array(); }
};

TEST_F(PagesTest, AnEmptyServiceShowsItsPeopleAndSaysWhatThereIsNot) {
    const QuillboxdProcess fresh(QuillboxdProcess::Storage::memory);
    const auto page = send("GET", fresh.url() + "/", {"Accept: text/html"});
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.body, HasSubstr("6 accounts, by name"));
    EXPECT_THAT(page.body, HasSubstr(">Anna Arden</a>"));
    EXPECT_THAT(page.body, HasSubstr("Backup records, the newest first: there are none."));
    EXPECT_THAT(page.body, HasSubstr("Locks in force: there are none."));
    EXPECT_THAT(page.body,
                HasSubstr("Requests, the newest first, with the bytes of their bodies: there are none."));
    EXPECT_THAT(page.body, HasSubstr("Planned faults, in the order of their making: there are none."));
}

TEST_F(PagesTest, APageRunsNothingAndNeedsNothingFromOutside) {
    client_.upload("hills.png", pictureBytes());
    for (const auto& page : {get("/"), get(linkOn(overview(), "someone"))}) {
        EXPECT_EQ(page.header("content-type"), "text/html; charset=utf-8");
        EXPECT_EQ(page.header("cache-control"), "no-store");
        EXPECT_EQ(page.header("x-content-type-options"), "nosniff");
        EXPECT_EQ(
            page.header("content-security-policy"),
            "default-src 'none'; style-src 'unsafe-inline'; img-src 'self'; form-action 'self'; base-uri "
            "'none'; frame-ancestors 'none'");
        for (const auto* foreign : {"<script", "<form", "@import", "url(", "http:", "https:", "onclick"})
            EXPECT_THAT(page.body, Not(HasSubstr(foreign)));
    }
}

TEST_F(PagesTest, APageIsThereForTheKeyboardAndForAReader) {
    client_.takeLock();
    plan(R"({"path":"/x","kind":"html"})");
    const auto page = overview();
    EXPECT_THAT(page, HasSubstr("<html lang=\"en\">"));
    EXPECT_THAT(page, HasSubstr("<meta name=\"viewport\""));
    EXPECT_EQ(linkOn(page, "Skip to the content"), "#main");
    EXPECT_THAT(page, HasSubstr("<main id=\"main\">"));
    EXPECT_EQ(countOf(page, "<h1>"), 1u);
    for (const auto* id : {"accounts", "backups", "locks", "requests", "faults"}) {
        EXPECT_THAT(page, HasSubstr(std::string("<h2 id=\"") + id + "\">"));
        EXPECT_THAT(page, HasSubstr(std::string("href=\"/#") + id + '"'));
    }
    const auto tables = countOf(page, "<table>");
    EXPECT_EQ(tables, 4u);
    EXPECT_EQ(countOf(page, "<caption>"), tables);
    EXPECT_EQ(countOf(page, "<thead><tr><th scope=\"col\""), tables);
    EXPECT_EQ(countOf(page, "<tbody>\n<tr><th scope=\"row\""), tables);
    EXPECT_EQ(countOf(page, "role=\"region\" tabindex=\"0\" aria-label="), tables);
}

TEST_F(PagesTest, WhatPeopleWroteIsTextAndNoMarkup) {
    const std::string rude = "<b title=\"'&'\">";
    const std::string escaped = "&lt;b title=&quot;&#39;&amp;&#39;&quot;&gt;";
    const BackupClient guest(process_.url(), rude);
    guest.addRecord(guest.takeLock(rude), rude);
    plan(json::serialize(json::object{{"path", rude}, {"verb", rude}, {"kind", "html"}, {rude, rude}}));
    send("GET", process_.url() + "/nothing?q=<i>");
    const auto page = overview();
    const auto folder = guest.makeFolder(rude);
    guest.upload(rude, pictureBytes(), 1000, folder);
    const auto outer = follow(page, escaped);
    const auto inner = follow(outer, escaped + '/');
    for (const auto& each : {page, outer, inner}) {
        EXPECT_THAT(each, HasSubstr(escaped));
        EXPECT_THAT(each, Not(HasSubstr("<b title")));
        EXPECT_THAT(each, Not(HasSubstr("<i>")));
    }
    EXPECT_EQ(countOf(page, escaped), 9u) << page;
    EXPECT_THAT(get("/_dev/pages/folders/101/%3Cb%3E").body, HasSubstr("&quot;&lt;b&gt;&quot;"));
}

TEST_F(PagesTest, AnAccountTellsWhatItHolds) {
    client_.upload("inside.txt", "four", 1000, client_.makeFolder("folder"));
    client_.upload("beside.txt", std::string(2000, 'x'));
    EXPECT_THAT(overview(), HasSubstr("<td class=\"number\">1</td><td class=\"number\">2</td>"
                                      "<td class=\"number\">2.0 KiB</td><td class=\"number\">10.0 GiB</td>"));
}

TEST_F(PagesTest, ManyAccountsGoOnOnAnotherPage) {
    for (int i = 0; i < 20; ++i) Client(process_.url(), "user " + std::to_string(100 + i));
    const auto page = overview();
    EXPECT_THAT(page, HasSubstr("27 accounts"));
    EXPECT_THAT(page, HasSubstr(">user 112</a>"));
    EXPECT_THAT(page, Not(HasSubstr(">user 113</a>")));
    const auto rest = follow(page, "More accounts");
    EXPECT_THAT(rest, HasSubstr(">user 113</a>"));
    EXPECT_THAT(rest, HasSubstr(">user 119</a>"));
    EXPECT_THAT(rest, Not(HasSubstr("More accounts")));
    EXPECT_EQ(get("/_dev/pages/accounts?offset=-1").status, 400);
}

TEST_F(PagesTest, FoldersAreWalked) {
    const auto outer = client_.makeFolder("outer");
    client_.upload("deep.txt", "deep", 1000, client_.makeFolder("inner", outer));
    const auto first = follow(rootFolder(), "outer/");
    EXPECT_THAT(first, HasSubstr("<h1>outer</h1>"));
    EXPECT_THAT(first, HasSubstr("<p>1 folder, 0 files, 0 B</p>"));
    const auto second = follow(first, "inner/");
    EXPECT_THAT(second, HasSubstr("deep.txt"));
    EXPECT_THAT(second, HasSubstr("<p>0 folders, 1 file, 4 B</p>"));
    EXPECT_EQ(follow(second, "outer"), first);
    EXPECT_EQ(follow(second, "someone"), rootFolder());
}

TEST_F(PagesTest, AnEmptyFolderSaysSo) {
    EXPECT_THAT(rootFolder(), HasSubstr("Folders and files, by name: there are none."));
}

TEST_F(PagesTest, APictureIsShownSmallAndOpened) {
    const auto bytes = pictureBytes();
    client_.upload("hills.png", bytes);
    const auto page = rootFolder();
    const auto address = linkOn(page, "<span class=\"item\">");
    EXPECT_THAT(page,
                HasSubstr("<img src=\"" + address + "\" alt=\"\" loading=\"lazy\"><span>hills.png</span>"));
    const auto picture = get(address);
    EXPECT_EQ(picture.body, bytes);
    EXPECT_EQ(picture.header("content-type"), "image/png");
    EXPECT_EQ(picture.header("x-content-type-options"), "nosniff");
    EXPECT_EQ(picture.header("content-security-policy"), "default-src 'none'; sandbox");
    EXPECT_EQ(picture.header("cross-origin-resource-policy"), "same-origin");
}

TEST_F(PagesTest, EachFormatOfPicturesIsKnownByItsBytes) {
    const std::pair<std::string, std::string> formats[] = {{"\xff\xd8\xff\xe0 and the rest", "image/jpeg"},
                                                           {"GIF89a and the rest of it", "image/gif"},
                                                           {"RIFF1234WEBP and the rest", "image/webp"},
                                                           {"1234ftypavif and the rest", "image/avif"}};
    for (const auto& [bytes, type] : formats) {
        client_.upload("only.txt", bytes);
        EXPECT_EQ(get(linkOn(rootFolder(), "<span class=\"item\">")).header("content-type"), type);
        ASSERT_EQ(send("POST", process_.url() + "/_dev/reset").status, 200);
        client_ = BackupClient(process_.url());
    }
}

TEST_F(PagesTest, WhatMayHoldAScriptIsNoPicture) {
    const std::string drawing = "<svg xmlns=\"http://www.w3.org/2000/svg\"><script>alert(1)</script></svg>";
    const auto id = client_.upload("drawing.png", drawing);
    client_.upload("page.png", "<!DOCTYPE html><script>alert(1)</script>");
    client_.upload("short.png", "\x89PNG");
    client_.upload("empty.png", "");
    const auto page = rootFolder();
    EXPECT_THAT(page, HasSubstr("drawing.png"));
    EXPECT_THAT(page, Not(HasSubstr("<img")));
    auto address = linkOn(overview(), "someone");
    address.replace(address.find("folders"), 7, "pictures").replace(address.find("root"), 4, id);
    const auto refused = get(address);
    EXPECT_EQ(refused.status, 404);
    EXPECT_THAT(refused.body, Not(HasSubstr("<svg")));
}

TEST_F(PagesTest, LookingIsNoAccessOfTheOwnersAndNoRequest) {
    client_.upload("hills.png", pictureBytes());
    const auto accessed = lastAccess();
    const auto before = journal().size();
    get(linkOn(rootFolder(), "<span class=\"item\">"));
    EXPECT_EQ(journal().size(), before);
    EXPECT_EQ(lastAccess(), accessed);
}

TEST_F(PagesTest, ALargeFolderIsShownPageByPage) {
    for (int i = 0; i < 101; ++i)
        client_.upload("hills " + std::to_string(100 + i) + ".png", pictureBytes(std::to_string(i)));
    const auto page = rootFolder();
    EXPECT_THAT(page, HasSubstr("0 folders, 101 files"));
    EXPECT_EQ(countOf(page, "<img"), 100u);
    const auto rest = follow(page, "More files");
    EXPECT_EQ(countOf(rest, "<img"), 1u);
    EXPECT_THAT(rest, HasSubstr("hills 200.png"));
    EXPECT_THAT(rest, Not(HasSubstr("More files")));
}

TEST_F(PagesTest, ARecordStandsWithItsCounts) {
    const auto device = BackupClient::dataOf(client_.cloudFile(
        "POST", "device", R"({"machineCode":"m","deviceName":"Anna's phone","deviceOS":"os"})"));
    const auto lock = client_.takeLock("7001");
    const auto record = client_.addRecord(lock, "7001", device.at("deviceId").as_int64());
    EXPECT_THAT(overview(), HasSubstr("<td>open</td><td class=\"number\">0</td><td class=\"wide\"></td>"));
    const std::string bytes = "BEGIN:VCARD";
    const auto created = client_
                             .plain("POST", "record/" + record + "/file",
                                    json::serialize(client_.createBody("all.vcf", bytes, 64)), lock)
                             .object();
    EXPECT_THAT(overview(), HasSubstr("<td>open</td><td class=\"number\">0</td>"))
        << "its content has not come";
    client_.putParts(created, bytes);
    client_.complete(textOf(created, "fileId"), bytes);
    client_.finish(record, lock, R"({"properties":"{\"successCount\":4,\"failedCount\":1}"})");
    const auto page = overview();
    EXPECT_THAT(
        page, HasSubstr("<td>7001</td><td class=\"any\">Anna&#39;s phone</td><td>finished</td>"
                        "<td class=\"number\">1</td><td class=\"wide\">successCount 4, failedCount 1</td>"));
}

TEST_F(PagesTest, WhatAClientToldOfItsRunNeedNotBeAnObject) {
    const auto lock = client_.takeLock();
    client_.plain("POST", "record", R"({"moduleCode":"102","deviceId":7,"properties":"<mine>"})", lock);
    client_.plain("POST", "record", R"({"moduleCode":"102","deviceId":7,"properties":"[1,2]"})", lock);
    EXPECT_THAT(overview(), HasSubstr(">&lt;mine&gt;<"));
    EXPECT_THAT(overview(), HasSubstr(">[1,2]<"));
}

TEST_F(PagesTest, ManyRecordsGoOnOnAnotherPage) {
    const auto lock = client_.takeLock();
    for (int i = 0; i < 11; ++i) client_.addRecord(lock);
    const auto page = overview();
    EXPECT_THAT(page, HasSubstr("scope=\"row\" class=\"number\">11<"));
    EXPECT_EQ(countOf(page, "<td>open</td>"), 10u);
    const auto rest = follow(page, "Older records");
    EXPECT_EQ(countOf(rest, "<td>open</td>"), 1u);
    EXPECT_THAT(rest, Not(HasSubstr("Older records")));
}

TEST_F(PagesTest, ALockIsShownWhileItIsInForce) {
    const auto lock = client_.takeLock("7001");
    EXPECT_THAT(overview(), HasSubstr("<td>7001</td><td>" + lock.substr(0, 6) + "…</td><td>not yet</td>"));
    client_.addRecord(lock, "7001");
    EXPECT_THAT(overview(), HasSubstr("<td>yes</td>"));
    expireLocks();
    EXPECT_THAT(overview(), HasSubstr("Locks in force: there are none."));
}

TEST_F(PagesTest, TheLastRequestsComeFirst) {
    client_.get("/files/path?fileId=5");
    client_.post("/files/list", "{}");
    EXPECT_THAT(overview(), HasSubstr("3</th><td>POST</td><td class=\"wide\">/quillbox/ose/v1/files/list</td>"
                                      "<td class=\"number\"><span class=\"good\">200</span></td>"
                                      "<td class=\"number\">2</td>"));
    EXPECT_THAT(overview(),
                HasSubstr("2</th><td>GET</td><td class=\"wide\">/quillbox/ose/v1/files/path?fileId=5</td>"
                          "<td class=\"number\"><span class=\"bad\">404</span></td>"));
    EXPECT_LT(overview().find("files/list"), overview().find("files/path"));
}

TEST_F(PagesTest, ARequestThatWaitsHasNoAnswerYet) {
    plan(R"({"path":"/quillbox/ose/v1/files/list","kind":"stall","seconds":3600})");
    auto answer = std::async(std::launch::async, [&] { return client_.post("/files/list", "{}"); });
    while (journal().size() < 2) std::this_thread::yield();
    EXPECT_THAT(overview(), HasSubstr("no answer"));
    send("DELETE", process_.url() + "/_dev/faults");
    EXPECT_EQ(answer.get().status, 200);
}

TEST_F(PagesTest, ManyRequestsGoOnOnAnotherPage) {
    for (int i = 0; i < 220; ++i) client_.get("/access");
    const auto page = overview();
    EXPECT_EQ(countOf(page, "/quillbox/ose/v1/access"), 20u);
    const auto earlier = follow(page, "Earlier requests");
    EXPECT_THAT(earlier, HasSubstr(">201</th>"));
    EXPECT_THAT(earlier, HasSubstr(">2</th>"));
    EXPECT_THAT(earlier, Not(HasSubstr(">1</th>")));
    const auto first = follow(earlier, "Earlier requests");
    EXPECT_THAT(first, HasSubstr(">1</th><td>POST</td>"));
    EXPECT_THAT(first, Not(HasSubstr("Earlier requests")));
}

TEST_F(PagesTest, NeitherTokenNorLockNorSignatureIsShownWhole) {
    const auto& token = client_.token();
    const auto lock = client_.takeLock();
    const auto address = client_.contentUrl(client_.upload("file", "bytes"));
    send("GET", address);
    send("GET", process_.url() + "/quillbox/ose/v1/access?token=" + token + "&lock=" + lock);
    plan(R"({"path":"/x/)" + token + R"(","kind":"html"})");
    const auto page = overview();
    EXPECT_THAT(page, HasSubstr("/quillbox/ose/v1/access?token=" + token.substr(0, 6) +
                                "…&amp;lock=" + lock.substr(0, 6) + "…"));
    EXPECT_THAT(page, HasSubstr("/x/" + token.substr(0, 6) + "…"));
    for (const auto& secret : {token, lock, address.substr(address.rfind('=') + 1)})
        EXPECT_THAT(page, Not(HasSubstr(secret.substr(0, 7))));
}

TEST_F(PagesTest, AFaultStandsWithItsHits) {
    plan(R"({"verb":"GET","path":"/quillbox/ose/v1/*","after":1,"times":5,"kind":"status","status":503,
             "body":{"code":7}})");
    for (int i = 0; i < 3; ++i) client_.get("/access");
    EXPECT_THAT(overview(), HasSubstr("<td>status</td><td>GET</td><td class=\"wide\">/quillbox/ose/v1/*</td>"
                                      "<td class=\"wide\">status 503, body {&quot;code&quot;:7}</td>"
                                      "<td class=\"number\">1</td><td class=\"number\">5</td>"
                                      "<td class=\"number\">2</td>"));
}

TEST_F(PagesTest, OfManyFaultsTheFirstAreShown) {
    for (int i = 0; i < 25; ++i) plan(R"({"path":"/x","kind":"html"})");
    EXPECT_EQ(countOf(overview(), "<td>html</td><td>any</td>"), 20u);
    EXPECT_THAT(overview(), HasSubstr("And 5 more."));
}

TEST_F(PagesTest, AFaultForEveryPathLeavesThePagesAlone) {
    plan(R"({"path":"*","kind":"reset"})");
    EXPECT_EQ(get("/").status, 200);
    EXPECT_EQ(get(linkOn(overview(), "someone")).status, 200);
    EXPECT_EQ(client_.get("/access").status, 0);
}

TEST_F(PagesTest, ARefusalIsAPageToo) {
    for (const auto& [path, status] : {std::pair("folders/9/root", 404),
                                       {"folders/x/root", 400},
                                       {"folders/101/9", 404},
                                       {"folders/101/root?cursor=x", 400},
                                       {"pictures/101/9", 404},
                                       {"pictures/101/root", 400},
                                       {"requests?before=x", 400},
                                       {"backups?before=x", 400},
                                       {"accounts?offset=x", 400}}) {
        const auto page = get(std::string("/_dev/pages/") + path);
        EXPECT_EQ(page.status, status) << path;
        EXPECT_EQ(page.header("content-type"), "text/html; charset=utf-8");
        EXPECT_THAT(page.body, HasSubstr("<h1>This page cannot be shown</h1>"));
    }
}

TEST_F(PagesTest, AFolderIsShownInItsOwnAccountAlone) {
    EXPECT_EQ(get("/_dev/pages/folders/101/" + client_.makeFolder("mine")).status, 404);
    EXPECT_EQ(get("/_dev/pages/pictures/101/" + client_.upload("mine.png", pictureBytes())).status, 404);
}

TEST_F(PagesTest, ClientsAreAnsweredAsBefore) {
    expectRefused(get("/nothing"), 404, "no endpoint /nothing");
    expectRefused(get("/_dev/pages/nothing"), 404, "no endpoint");
    for (const auto* verb : {"GET", "POST"}) {
        expectRefused(send(verb, process_.url() + "/", {"Accept: */*"}), 404, "no endpoint /");
        EXPECT_EQ(journal().back().at("verb").as_string(), verb);
        EXPECT_EQ(journal().back().at("path").as_string(), "/");
    }
}

}  // namespace
}  // namespace quillboxd_test
