#include "tests/quillboxd/html_page.h"
#include "tests/quillboxd/share_client.h"

namespace quillboxd_test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

class SharePageTest : public ShareTest {
  protected:
    HttpAnswer open(const json::object& link, const std::vector<std::string>& headers = {},
                    const std::string& behind = "") const {
        return send("GET", textOf(link, "linkUrl") + behind, headers);
    }
    static HttpAnswer enter(const json::object& link, const std::string& code) {
        return send("POST", textOf(link, "linkUrl"), {"Content-Type: application/x-www-form-urlencoded"},
                    "extractCode=" + code);
    }
    std::int64_t views(const json::object& link) const {
        return linkOf(modify(idOf(link), "{}")).at("viewCnt").as_int64();
    }
};

TEST_F(SharePageTest, ALinkOpensItsFiles) {
    const auto link = share(R"("comment":"see <this>")");
    const auto page = open(link);
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.header("content-type"), "text/html; charset=utf-8");
    EXPECT_EQ(page.header("cache-control"), "no-store");
    EXPECT_THAT(page.header("content-security-policy"), HasSubstr("default-src 'none'"));
    EXPECT_THAT(page.header("content-security-policy"), HasSubstr("frame-ancestors 'none'"));
    EXPECT_EQ(page.header("x-content-type-options"), "nosniff");
    EXPECT_THAT(page.body, HasSubstr("Shared by owner"));
    EXPECT_THAT(page.body, HasSubstr("see &lt;this&gt;"));
    EXPECT_THAT(page.body, HasSubstr("<td>5 B</td>"));
    EXPECT_EQ(send("GET", linkOn(page.body, "Download<span")).body, "hello");
    EXPECT_TRUE(send("GET", linkOn(page.body, "a.txt")).header("content-disposition").starts_with("inline"));
    EXPECT_EQ(views(link), 1);
}

TEST_F(SharePageTest, ThePageNeedsNothingElse) {
    const auto page = open(share()).body;
    EXPECT_THAT(page, HasSubstr("<html lang=\"en\">"));
    EXPECT_THAT(page, HasSubstr("color-scheme: light dark"));
    for (const auto* foreign : {"<script", "src=", "@import", "url("})
        EXPECT_THAT(page, Not(HasSubstr(foreign)));
}

TEST_F(SharePageTest, NamesAreTextAndNoMarkup) {
    const auto id = owner_.upload("<b>&\"'.txt", "x");
    const auto page = open(linkOf(askForShare(R"("fileIds":[")" + id + "\"]"))).body;
    EXPECT_THAT(page, HasSubstr("&lt;b&gt;&amp;&quot;&#39;.txt"));
    EXPECT_THAT(page, Not(HasSubstr("<b>")));
}

TEST_F(SharePageTest, ALinkWithACodeAsksForIt) {
    const auto link = share(R"("extractCode":"k 3;é")");
    const auto asked = open(link);
    EXPECT_EQ(asked.status, 200);
    EXPECT_THAT(asked.body, HasSubstr("<label for=\"code\">"));
    EXPECT_THAT(asked.body, Not(HasSubstr("a.txt")));
    const auto wrong = enter(link, "k3");
    EXPECT_EQ(wrong.status, 403);
    EXPECT_THAT(wrong.body, HasSubstr("The extract code is wrong."));
    EXPECT_THAT(wrong.body, HasSubstr("<form"));
    const auto right = enter(link, "k+3%3B%C3%A9");
    EXPECT_EQ(right.status, 303);
    EXPECT_EQ(right.header("location"), "/s/" + shortUrlOf(link));
    const auto cookie = right.header("set-cookie");
    EXPECT_THAT(cookie,
                MatchesRegex("qbstoken=[^; ]+; Path=/s/" + shortUrlOf(link) + "; HttpOnly; SameSite=Lax"));
    EXPECT_EQ(views(link), 0) << "the form is no view";
    const auto opened = open(link, {"Cookie: other=1; " + cookie.substr(0, cookie.find(';')) + "; more=2"});
    EXPECT_THAT(opened.body, HasSubstr("a.txt"));
    EXPECT_EQ(views(link), 1);
    modify(idOf(link), R"({"extractCode":"new"})");
    EXPECT_THAT(open(link, {"Cookie: " + cookie}).body, Not(HasSubstr("a.txt")));
}

TEST_F(SharePageTest, FoldersAreWalked) {
    const auto inner = owner_.makeFolder("inner", folder_);
    owner_.upload("deep.txt", "deep", 1000, inner);
    const auto link = linkOf(askForShare(R"("fileIds":[")" + folder_ + "\"]"));
    const auto first = linkOn(open(link).body, "folder/");
    EXPECT_EQ(first, "/s/" + shortUrlOf(link) + "/" + folder_);
    const auto second = linkOn(send("GET", process_.url() + first).body, "inner/");
    const auto page = send("GET", process_.url() + second).body;
    EXPECT_THAT(page, HasSubstr("deep.txt"));
    EXPECT_EQ(linkOn(page, "All files"), "/s/" + shortUrlOf(link));
    EXPECT_EQ(linkOn(page, "folder<"), first);
    EXPECT_EQ(views(link), 1) << "a folder is no view of its own";
    EXPECT_EQ(open(link, {}, "/12").status, 404);
}

TEST_F(SharePageTest, ALongListGoesOnOnAnotherPage) {
    for (int i = 0; i < 201; ++i) owner_.makeFolder(std::to_string(1000 + i), folder_);
    const auto link = linkOf(askForShare(R"("fileIds":[")" + folder_ + "\"]"));
    const auto page = open(link, {}, "/" + folder_).body;
    EXPECT_THAT(page, HasSubstr(">1199/<"));
    EXPECT_THAT(page, Not(HasSubstr(">1200/<")));
    EXPECT_THAT(send("GET", process_.url() + linkOn(page, "More files")).body, HasSubstr(">1200/<"));
}

TEST_F(SharePageTest, WhatIsNotPermittedIsNotOffered) {
    const auto look = open(share(R"("permission":{"preview":true})")).body;
    EXPECT_THAT(look, Not(HasSubstr("Download<span")));
    EXPECT_THAT(look, HasSubstr(">a.txt</a>"));
    const auto take = open(share(R"("permission":{"download":true})")).body;
    EXPECT_THAT(take, HasSubstr("Download<span"));
    EXPECT_THAT(take, HasSubstr("<td>a.txt</td>"));
}

TEST_F(SharePageTest, ARefusalIsAPageToo) {
    const auto unknown = send("GET", process_.url() + "/s/nothing");
    EXPECT_EQ(unknown.status, 404);
    EXPECT_EQ(unknown.header("content-type"), "text/html; charset=utf-8");
    EXPECT_THAT(unknown.body, HasSubstr("There is no link &quot;nothing&quot;."));
    const auto chosen = share(R"("scope":1,"userIds":[")" + userId("other") + "\"]");
    EXPECT_EQ(open(chosen).status, 403);
    const auto link = share();
    expireLinks();
    EXPECT_THAT(open(link).body, HasSubstr("The link has expired."));
    EXPECT_EQ(enter(link, "").status, 403);
}

}  // namespace
}  // namespace quillboxd_test
