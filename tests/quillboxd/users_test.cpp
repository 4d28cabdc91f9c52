#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* address = "/quillbox/ose/v1/users/";

/// A service in memory, with the organisation's administrator and one of its members signed in.
class UsersTest : public testing::Test {
  protected:
    /// What clients send for a change, and without a body for a deletion.
    HttpAnswer remove(const Client& client, const std::string& user, const std::string& body = "") const {
        return send("DELETE", process_.url() + address + user, {"Authorization: " + client.token()}, body);
    }
    json::object user(const std::string& id) const {
        const auto answer = anna_.get("/users/" + id);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return answer.object().at("data").as_object();
    }
    std::vector<std::string> names(const std::string& query) const {
        const auto answer = ben_.get("/userList?" + query);
        EXPECT_EQ(answer.status, 200) << answer.body;
        std::vector<std::string> names;
        const auto object = answer.object();
        for (const auto& each : object.at("list").as_array())
            names.push_back(textOf(each.as_object(), "name"));
        return names;
    }
    HttpAnswer signIn(const std::string& code) const {
        return send("POST", process_.url() + "/quillbox/ose/v1/carrier/standard/user/auth", {},
                    json::serialize(json::object{{"authCode", code}}));
    }

    QuillboxdProcess process_{QuillboxdProcess::Storage::memory};
    Client anna_{process_.url(), "anna"};
    Client ben_{process_.url(), "ben"};
};

TEST_F(UsersTest, AUserIsToldWhole) {
    EXPECT_EQ(json::serialize(user("102")),
              R"({"id":102,"name":"Ben Bloom","userId":"102","deptId":2,"deptName":"Letters","role":0,)"
              R"("status":0,"mobile":"+44 20 7946 0102"})");
    EXPECT_EQ(user("101").at("role").as_int64(), 1);
    EXPECT_EQ(ben_.get("/users/101").status, 200);
}

TEST_F(UsersTest, AUserWhoIsNotThereIsRefused) {
    expectRefused(anna_.get("/users/999"), 404, "no user 999");
    expectRefused(anna_.get("/users/ben"), 400, "user id");
    expectRefused(anna_.get("/users/"), 404, "no endpoint");
}

TEST_F(UsersTest, WhoeverSignsInIsAMember) {
    const Client zoe(process_.url(), "zoe");
    EXPECT_THAT(names("isDirect=true&keyWord=zoe"), ElementsAre("zoe"));
    const auto object = zoe.get("/userList?isDirect=true&keyWord=zoe").object();
    const auto& found = object.at("list").at(0).as_object();
    EXPECT_EQ(textOf(found, "deptName"), "Quill & Daughters");
    EXPECT_EQ(found.at("role").as_int64(), 0);
    EXPECT_FALSE(found.contains("mobile"));
}

TEST_F(UsersTest, ADepartmentIsListedWithOrWithoutThoseBelow) {
    EXPECT_THAT(names("isDirect=false"),
                ElementsAre("Anna Arden", "Ben Bloom", "Clara Cole", "Dora Dunn", "Emil East", "Freya Ford"));
    EXPECT_THAT(names("isDirect=true"), ElementsAre("Anna Arden"));
    EXPECT_THAT(names("deptId=3&isDirect=false"), ElementsAre("Dora Dunn", "Emil East", "Freya Ford"));
    EXPECT_THAT(names("deptId=3&isDirect=true"), ElementsAre("Dora Dunn"));
    EXPECT_THAT(names("isDirect=false&keyWord=FO"), ElementsAre("Freya Ford"));
    EXPECT_THAT(names("deptId=2&isDirect=false&keyWord=FO"), IsEmpty());
}

TEST_F(UsersTest, AListComesInPages) {
    EXPECT_THAT(names("isDirect=false&limit=2"), ElementsAre("Anna Arden", "Ben Bloom"));
    EXPECT_THAT(names("isDirect=false&offset=4&limit=2"), ElementsAre("Emil East", "Freya Ford"));
    EXPECT_THAT(names("isDirect=false&offset=6"), IsEmpty());
    EXPECT_EQ(ben_.get("/userList?isDirect=false&offset=6&limit=1").object().at("total").as_int64(), 6);
}

TEST_F(UsersTest, AListThatMakesNoSenseIsRefused) {
    expectRefused(ben_.get("/userList"), 400, "isDirect");
    expectRefused(ben_.get("/userList?isDirect=yes"), 400, "true or false");
    expectRefused(ben_.get("/userList?isDirect=true&deptId=9"), 404, "no department 9");
    expectRefused(ben_.get("/userList?isDirect=true&deptId=x"), 400, "deptId");
    expectRefused(ben_.get("/userList?isDirect=true&limit=0"), 400, "limit");
    expectRefused(ben_.get("/userList?isDirect=true&offset=-1"), 400, "offset");
    expectRefused(ben_.get("/userList?isDirect=true&offset=ten"), 400, "offset");
}

TEST_F(UsersTest, AnAdministratorChangesWhatTheBodyNames) {
    EXPECT_EQ(remove(anna_, "102", R"({"deptId":4})").status, 200);
    EXPECT_EQ(textOf(user("102"), "deptName"), "Bindery");
    EXPECT_EQ(remove(anna_, "102", R"({"role":1})").status, 200);
    EXPECT_EQ(user("102").at("deptId").as_int64(), 4);
    EXPECT_EQ(user("102").at("role").as_int64(), 1);
    EXPECT_EQ(remove(ben_, "103", "{}").status, 200);
}

TEST_F(UsersTest, AChangeThatMakesNoSenseIsRefused) {
    expectRefused(remove(anna_, "102", R"({"deptId":9})"), 404, "no department 9");
    expectRefused(remove(anna_, "102", R"({"deptId":"2"})"), 400, "deptId");
    expectRefused(remove(anna_, "102", R"({"role":2})"), 400, "role");
    expectRefused(remove(anna_, "102", R"({"status":-1})"), 400, "status");
    expectRefused(remove(anna_, "999", "{}"), 404, "no user 999");
    expectRefused(remove(anna_, "999"), 404, "no user 999");
}

TEST_F(UsersTest, OnlyAnAdministratorChangesOthersAndNobodyThemselves) {
    expectRefused(remove(ben_, "103", R"({"deptId":3})"), 403, "administrator");
    expectRefused(remove(ben_, "103"), 403, "administrator");
    expectRefused(remove(anna_, "101", R"({"role":0})"), 403, "themselves");
    expectRefused(remove(anna_, "101"), 403, "themselves");
    EXPECT_THAT(names("isDirect=false"), SizeIs(6));
}

TEST_F(UsersTest, WhoIsSuspendedWaitsUntilTheyAreActiveAgain) {
    EXPECT_EQ(remove(anna_, "102", R"({"status":1})").status, 200);
    expectRefused(ben_.get("/access"), 403, "suspended");
    expectRefused(signIn("ben"), 403, "suspended");
    EXPECT_EQ(user("102").at("status").as_int64(), 1);
    EXPECT_EQ(remove(anna_, "102", R"({"status":0})").status, 200);
    EXPECT_EQ(ben_.get("/access").status, 200);
}

TEST_F(UsersTest, WhoIsDeletedIsGone) {
    EXPECT_EQ(remove(anna_, "102").status, 200);
    expectRefused(anna_.get("/users/102"), 404, "no user 102");
    expectRefused(remove(anna_, "102"), 404, "no user 102");
    expectRefused(ben_.get("/access"), 401, "token");
    expectRefused(signIn("ben"), 403, "deleted");
    const auto all = anna_.get("/userList?isDirect=false").object();
    EXPECT_EQ(all.at("total").as_int64(), 5);
    EXPECT_THAT(all.at("list").as_array(), SizeIs(5));
}

TEST_F(UsersTest, AResetBringsTheOrganisationBack) {
    remove(anna_, "102");
    remove(anna_, "103", R"({"role":1})");
    EXPECT_EQ(send("POST", process_.url() + "/_dev/reset").status, 200);
    const Client anna(process_.url(), "anna");
    const auto all = anna.get("/userList?isDirect=false").object();
    EXPECT_EQ(all.at("total").as_int64(), 6);
    EXPECT_EQ(all.at("list").at(2).at("role").as_int64(), 0);
}

TEST(UsersPersistenceTest, AChangeIsThereAfterAKill) {
    QuillboxdProcess process;
    const Client anna(process.url(), "anna");
    const std::vector<std::string> headers{"Authorization: " + anna.token()};
    EXPECT_EQ(send("DELETE", process.url() + address + "102", headers, R"({"deptId":4})").status, 200);
    EXPECT_EQ(send("DELETE", process.url() + address + "103", headers).status, 200);
    process.kill();
    process.start();
    EXPECT_EQ(anna.get("/users/102").object().at("data").at("deptId").as_int64(), 4);
    expectRefused(anna.get("/users/103"), 404, "no user 103");
}

}  // namespace
}  // namespace quillboxd_test
