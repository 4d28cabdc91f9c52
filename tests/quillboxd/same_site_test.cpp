#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class SameSiteTest : public ServiceTest {
  protected:
    HttpAnswer ask(const std::string& path, const std::string& header) const {
        return send("GET", process_.url() + path, {header, "Accept: text/html"});
    }
    HttpAnswer planFrom(const std::string& origin) const {
        return send("POST", process_.url() + "/_dev/faults",
                    {"Origin: " + origin, "Content-Type: text/plain"}, R"({"path":"*","kind":"reset"})");
    }
};

TEST_F(SameSiteTest, TheOwnNamesAreAnswered) {
    for (const auto* host :
         {"localhost", "LOCALHOST", "localhost:8080", "127.0.0.1", "127.0.0.1:1", "127.1.2.3:80", "[::1]",
          "[::1]:8080", "drive.localhost:8080", "container:8080"}) {
        EXPECT_EQ(ask("/", std::string("Host: ") + host).status, 200) << host;
        EXPECT_EQ(ask("/_dev/health", std::string("Host: ") + host).status, 200) << host;
    }
}

TEST_F(SameSiteTest, ANameThatAnotherSiteCouldHaveIsRefused) {
    for (const auto* host : {"site.example", "site.example:8080", "127.0.0.1.site.example",
                             "localhost.site.example", "1.2.3.4x", "notlocalhost.com:80", "localhost."}) {
        const auto page = ask("/", std::string("Host: ") + host);
        EXPECT_EQ(page.status, 403) << host;
        EXPECT_EQ(page.header("content-type"), "text/html; charset=utf-8");
        EXPECT_THAT(page.body, HasSubstr("may be another site"));
        expectRefused(ask("/_dev/requests", std::string("Host: ") + host), 403, "may be another site");
    }
}

TEST_F(SameSiteTest, AClientOfTheServiceMayCallItByAnyName) {
    EXPECT_EQ(send("POST", process_.url() + "/quillbox/ose/v1/files/list",
                   {"Host: site.example", "Authorization: " + client_.token()}, "{}")
                  .status,
              200);
}

TEST_F(SameSiteTest, ARequestWithoutAHostIsAnswered) {
    EXPECT_THAT(exchangeRaw(process_.port(), "GET / HTTP/1.0\r\nAccept: text/html\r\n\r\n"),
                StartsWith("HTTP/1.1 200"));
}

TEST_F(SameSiteTest, APageOfAnotherSitePlansNothing) {
    for (const auto* origin : {"https://site.example", "null", "http://127.0.0.1:1", "http://localhost"})
        expectRefused(planFrom(origin), 403, "comes from the site");
    EXPECT_EQ(send("DELETE", process_.url() + "/_dev/locks", {"Origin: null"}).status, 403);
    EXPECT_THAT(send("GET", process_.url() + "/_dev/faults").object().at("faults").as_array(), IsEmpty());
    EXPECT_EQ(planFrom(process_.url()).status, 200);
}

}  // namespace
}  // namespace quillboxd_test
