#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::HasSubstr;

class ContentTest : public ServiceTest {
  protected:
    HttpAnswer get(std::vector<std::string> headers = {}) const { return send("GET", url_, headers); }
    HttpAnswer getRange(const std::string& range) const { return get({"Range: " + range}); }

    const std::string bytes_ = someBytes(300'000);
    const std::string id_ = client_.upload("data.bin", bytes_, 100'000);
    const std::string url_ = client_.contentUrl(id_);
};

TEST_F(ContentTest, TheWholeFileComesWithItsLengthAndTag) {
    const auto answer = get();
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, bytes_);
    EXPECT_EQ(answer.header("content-length"), "300000");
    EXPECT_EQ(answer.header("accept-ranges"), "bytes");
    EXPECT_EQ(answer.header("etag"), '"' + sha256Hex(bytes_) + '"');
    EXPECT_THAT(answer.header("content-disposition"), HasSubstr("attachment; filename=\"data.bin\""));
}

TEST_F(ContentTest, APageThatSomebodyUploadedRunsNoScriptOfTheServices) {
    auto body = client_.createBody("page.html", "<script>go()</script>", 100);
    body["mimeType"] = "text/html";
    const auto created = client_.create(body).object();
    client_.putParts(created, "<script>go()</script>");
    const auto id = textOf(created, "fileId");
    EXPECT_EQ(client_.complete(id, "<script>go()</script>").status, 200);
    const auto address = client_.contentUrl(id);
    for (const auto& answer : {send("GET", address), send("GET", address, {"Range: bytes=1-3"})}) {
        EXPECT_EQ(answer.header("content-type"), "text/html");
        EXPECT_EQ(answer.header("x-content-type-options"), "nosniff");
        EXPECT_EQ(answer.header("content-security-policy"), "sandbox");
    }
}

TEST_F(ContentTest, AHeadTellsTheSameWithoutTheBytes) {
    const auto answer = send("HEAD", url_);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, "");
    EXPECT_EQ(answer.header("content-length"), "300000");
}

TEST_F(ContentTest, ARangeComesAcrossTheEdgesOfParts) {
    const auto answer = getRange("bytes=99990-200009");
    EXPECT_EQ(answer.status, 206);
    EXPECT_EQ(answer.body, bytes_.substr(99'990, 100'020));
    EXPECT_EQ(answer.header("content-range"), "bytes 99990-200009/300000");
}

TEST_F(ContentTest, ARangeMayBeOpenOrCountFromTheEnd) {
    EXPECT_EQ(getRange("bytes=299990-").body, bytes_.substr(299'990));
    EXPECT_EQ(getRange("bytes=-10").body, bytes_.substr(299'990));
    EXPECT_EQ(getRange("bytes=-999999").body, bytes_);
    EXPECT_EQ(getRange("bytes=0-0").body, bytes_.substr(0, 1));
    EXPECT_EQ(getRange("bytes=299999-999999999999").body, bytes_.substr(299'999));
    EXPECT_EQ(getRange("bytes=100000-199999").body, bytes_.substr(100'000, 100'000));
}

TEST_F(ContentTest, ARangeBehindTheEndIsRefusedWithTheSize) {
    for (const char* range : {"bytes=300000-", "bytes=999999-1000000", "bytes=-0"}) {
        const auto answer = getRange(range);
        expectRefused(answer, 416, "range");
        EXPECT_EQ(answer.header("content-range"), "bytes */300000");
    }
}

TEST_F(ContentTest, ARangeThatCannotBeReadIsPassedOver) {
    for (const char* range :
         {"bytes=5-2", "bytes=a-b", "bytes=-", "items=0-5", "bytes=0-1,5-6", "bytes=99999999999999999999-"}) {
        const auto answer = getRange(range);
        EXPECT_EQ(answer.status, 200) << range;
        EXPECT_EQ(answer.body.size(), bytes_.size()) << range;
    }
}

TEST_F(ContentTest, ARangeOfAnOlderContentGivesTheWholeFile) {
    const auto tag = '"' + sha256Hex(bytes_) + '"';
    EXPECT_EQ(get({"Range: bytes=0-4", "If-Range: " + tag}).status, 206);
    EXPECT_EQ(get({"Range: bytes=0-4", "If-Range: \"another\""}).status, 200);
}

TEST_F(ContentTest, AnEmptyFileHasNoRange) {
    const auto id = client_.upload("empty", "");
    const auto url = client_.contentUrl(id);
    EXPECT_EQ(send("GET", url).status, 200);
    expectRefused(send("GET", url, {"Range: bytes=0-"}), 416, "range");
}

TEST_F(ContentTest, AnAlteredAddressIsRefused) {
    auto altered = url_;
    altered.back() = altered.back() == 'a' ? 'b' : 'a';
    expectRefused(send("GET", altered), 403, "altered");
    expectRefused(send("GET", url_.substr(0, url_.find('?'))), 403, "no address");
    auto inlineView = url_;
    inlineView.insert(inlineView.find('?'), "/inline");
    expectRefused(send("GET", inlineView), 403, "altered");
}

TEST_F(ContentTest, AnyFileNameIsSafeInTheHeader) {
    const std::string name = "a\"b\\c\r\nX-Evil: 1 ü%.txt";
    const auto url = client_.contentUrl(client_.upload(name, "x"));
    const auto answer = send("GET", url);
    EXPECT_EQ(answer.header("x-evil"), "");
    EXPECT_EQ(answer.header("content-disposition"),
              "attachment; filename=\"a_b_c__X-Evil: 1 ___.txt\"; "
              "filename*=UTF-8''a%22b%5cc%0d%0aX-Evil%3a%201%20%c3%bc%25.txt");
}

TEST_F(ContentTest, AMimeTypeWithALineEndStaysOutOfTheHeader) {
    auto body = client_.createBody("x", "bytes", 64);
    body["mimeType"] = "text/plain\r\nX-Evil: 1";
    const auto created = client_.create(body).object();
    client_.putParts(created, "bytes");
    client_.complete(textOf(created, "fileId"), "bytes");
    const auto answer = send("GET", client_.contentUrl(textOf(created, "fileId")));
    EXPECT_EQ(answer.header("content-type"), "application/octet-stream");
    EXPECT_EQ(answer.header("x-evil"), "");
}

}  // namespace
}  // namespace quillboxd_test
