#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class HttpTest : public ServiceTest {
  protected:
    std::string exchange(const std::string& bytes) const { return exchangeRaw(process_.port(), bytes); }
};

TEST_F(HttpTest, AnUnknownEndpointIsNotFound) {
    expectRefused(send("GET", process_.url() + "/index.html"), 404, "no endpoint /index.html");
    expectRefused(client_.get("/nothing/at/all"), 404, "/nothing/at/all");
    expectRefused(client_.post("/files/", "{}"), 404, "no endpoint");
    expectRefused(client_.post("/files/a/b/c", "{}"), 404, "no endpoint");
    expectRefused(client_.post("/files/list/", "{}"), 404, "no endpoint");
}

TEST_F(HttpTest, AKnownEndpointSaysWhichVerbItDoesNotTake) {
    expectRefused(client_.get("/files/create"), 405, "GET");
    expectRefused(send("PATCH", process_.url() + "/quillbox/ose/v1/access"), 405, "PATCH");
}

TEST_F(HttpTest, ABodyThatIsNoJsonIsRefused) {
    for (const char* body : {"", "{", "[]", "null", "5", "{\"a\":1}x", "{\"a\":\"\xff\"}", "{'a':1}"}) {
        expectRefused(client_.post("/files/list", body), 400, "the body");
    }
    expectRefused(client_.post("/files/list", std::string(100'000, '[')), 400, "the body is not JSON");
}

TEST_F(HttpTest, SegmentsOfAPathAreDecoded) {
    const auto id = client_.upload("file", "bytes");
    const auto encoded = "%3" + id.substr(0, 1) + id.substr(1);
    EXPECT_EQ(client_.post("/files/" + encoded + "/detail", "{}").status, 200);
    expectRefused(client_.post("/files/a%2Fb/detail", "{}"), 404, "\"a/b\"");
    expectRefused(client_.post("/files/100%/detail", "{}"), 404, "\"100%\"");
    expectRefused(client_.post("/files/%ff/detail", "{}"), 400, "UTF-8");
    expectRefused(client_.get("/files/path?fileId=%ff"), 400, "UTF-8");
}

TEST_F(HttpTest, SeveralRequestsShareAConnection) {
    const auto answers = exchange(
        "GET /_dev/health HTTP/1.1\r\nHost: x\r\n\r\nPOST /_dev/nothing HTTP/1.1\r\nHost: "
        "x\r\nContent-Length: 5\r\n\r\nhello"
        "GET /_dev/health HTTP/1.1\r\nHost: x\r\n\r\n");
    std::size_t count = 0;
    for (auto at = answers.find("HTTP/1.1 "); at != answers.npos; at = answers.find("HTTP/1.1 ", at + 1))
        ++count;
    EXPECT_EQ(count, 3u) << answers;
}

TEST_F(HttpTest, ARefusedBodyIsTakenInBeforeTheNextRequest) {
    const std::string body(300'000, 'x');
    const auto answers = exchange("PUT /_part/1/1 HTTP/1.1\r\nHost: x\r\nContent-Length: 300000\r\n\r\n" +
                                  body + "GET /_dev/health HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_THAT(answers, StartsWith("HTTP/1.1 403"));
    EXPECT_THAT(answers, HasSubstr("HTTP/1.1 200"));
}

TEST_F(HttpTest, AChunkedBodyIsRead) {
    const auto answer = exchange(
        "POST /quillbox/ose/v1/carrier/standard/user/auth HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: "
        "chunked\r\n\r\n"
        "6\r\n{\"auth\r\n12\r\nCode\":\"in chunks\"}\r\n0\r\n\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 200"));
    EXPECT_THAT(answer, HasSubstr("in chunks"));
}

TEST_F(HttpTest, ABrokenChunkIsRefused) {
    const auto answer =
        exchange("POST /_dev/faults HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 400"));
    EXPECT_THAT(answer, HasSubstr("chunked"));
}

TEST_F(HttpTest, WhoAsksIsToldToSendTheBody) {
    const auto answer = exchange(
        "POST /quillbox/ose/v1/carrier/standard/user/auth HTTP/1.1\r\nHost: x\r\nContent-Length: 16\r\n"
        "Expect: 100-continue\r\n\r\n{\"authCode\":\"a\"}");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200"));
}

TEST_F(HttpTest, WhatIsNoHttpIsRefused) {
    for (const std::string& bytes :
         {std::string("nonsense\r\n\r\n"), std::string("GET / HTTP/9.9\r\n\r\n"),
          std::string("GET /\x01 HTTP/1.1\r\n\r\n"), std::string("GET / HTTP/1.1\r\nbad header\r\n\r\n"),
          std::string("POST / HTTP/1.1\r\nContent-Length: -5\r\n\r\n"),
          std::string("POST / HTTP/1.1\r\nContent-Length: 5\r\nTransfer-Encoding: chunked\r\n\r\n"),
          std::string("PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n"), std::string("GET / HTTP/1.1\r\nHost")}) {
        EXPECT_THAT(exchange(bytes), StartsWith("HTTP/1.1 400")) << bytes;
    }
}

TEST_F(HttpTest, AHeadWithoutEndIsRefused) {
    EXPECT_THAT(exchange("GET / HTTP/1.1\r\nX-Long: " + std::string(200'000, 'x')),
                StartsWith("HTTP/1.1 431"));
    EXPECT_THAT(exchange("GET /" + std::string(200'000, 'x')), StartsWith("HTTP/1.1 431"));
}

TEST_F(HttpTest, ABodyOfMoreThanSixtyFourMebibytesIsRefused) {
    const std::string large((64 << 20) + 1, ' ');
    expectRefused(client_.post("/files/list", large), 413, "67108864");
}

TEST_F(HttpTest, AnOldClientGetsItsAnswerAndTheEnd) {
    const auto answer = exchange("GET /_dev/health HTTP/1.0\r\nConnection: keep-alive\r\n\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 200"));
    EXPECT_THAT(answer, HasSubstr("Connection: close"));
}

TEST_F(HttpTest, RandomBytesDoNoHarm) {
    for (unsigned seed = 0; seed < 50; ++seed) exchange(someBytes(500, seed));
    EXPECT_EQ(send("GET", process_.url() + "/_dev/health").status, 200);
}

}  // namespace
}  // namespace quillboxd_test
