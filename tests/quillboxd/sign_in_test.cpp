#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SignInTest : public ServiceTest {
  protected:
    HttpAnswer signIn(const std::string& body) const {
        return send("POST", process_.url() + "/quillbox/ose/v1/carrier/standard/user/auth", {}, body);
    }
};

TEST_F(SignInTest, AnAnswerHasTokenUserAndContainer) {
    const auto answer = signIn(R"({"authCode":"new"})").object();
    EXPECT_EQ(answer.at("code").as_int64(), 0);
    EXPECT_EQ(textOf(answer, "msg"), "success");
    EXPECT_FALSE(textOf(answer, "accessToken").empty());
    EXPECT_GT(answer.at("innerUserId").as_int64(), 0);
    EXPECT_FALSE(textOf(answer.at("data").as_object(), "carrierUserId").empty());
}

TEST_F(SignInTest, TheSameCodeIsTheSameAccountAndEveryTokenStaysValid) {
    const Client again(process_.url());
    EXPECT_EQ(again.container(), client_.container());
    client_.makeFolder("mine");
    EXPECT_THAT(again.names(), ElementsAre("mine"));
    EXPECT_THAT(client_.names(), ElementsAre("mine"));
}

TEST_F(SignInTest, AnotherCodeIsAnAccountOfItsOwn) {
    const auto id = client_.upload("secret.txt", "mine alone");
    const Client other(process_.url(), "other");
    EXPECT_THAT(other.names(), IsEmpty());
    EXPECT_NE(other.container(), client_.container());
    expectRefused(other.post("/files/" + id + "/detail", "{}"), 404, id);
    expectRefused(other.post("/files/rename/" + id, R"({"name":"taken"})"), 404, id);
}

TEST_F(SignInTest, AMissingOrEmptyCodeIsRefused) {
    expectRefused(signIn("{}"), 400, "authCode");
    expectRefused(signIn(R"({"authCode":""})"), 400, "authCode");
    expectRefused(signIn(R"({"authCode":7})"), 400, "\"authCode\" must be a text");
}

TEST_F(SignInTest, ACallWithoutATokenIsRefused) {
    const auto url = process_.url() + "/quillbox/ose/v1/access";
    expectRefused(send("GET", url), 401, "missing");
    expectRefused(send("GET", url, {"Authorization: nonsense"}), 401, "unknown");
    expectRefused(send("GET", url, {"Authorization: Bearer " + client_.token()}), 401, "unknown");
    expectRefused(send("GET", url, {"Authorization;"}), 401, "unknown");
}

TEST_F(SignInTest, TheContainerOfAnotherAccountIsRefused) {
    const Client other(process_.url(), "other");
    const auto list = [&](const std::string& container) {
        return client_.post("/files/list", json::serialize(json::object{{"containerId", container}}));
    };
    EXPECT_EQ(list(client_.container()).status, 200);
    EXPECT_EQ(list("").status, 200);
    expectRefused(list(other.container()), 403, "not this account's");
}

}  // namespace
}  // namespace quillboxd_test
