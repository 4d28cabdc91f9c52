// The operations of sign-in, users and space.

#include "tests/cli/call_rows.h"

namespace quillbox_test::call_users {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string remove(const std::string& target) {
    return "DELETE /quillbox/ose/v1/" + target;
}

const std::vector<Row> userRows = {
    {"getToken", "absent", absent, refused},
    {"getToken", "fresh", "{}", refused},
    {"getToken", "emptyCode", R"({"authCode":""})", failure(13000400, R"(\"authCode\" is missing or empty)"),
     "", post("carrier/standard/user/auth")},
    {"getToken", "full", R"({"authCode":"another"})", success + R"("accessToken":")",
     R"("carrierUserName":"another")", post("carrier/standard/user/auth")},

    {"getSpace", "absent", absent, refused},
    {"getSpace", "fresh", "{}", success + R"("data":{"tenantId":"quillbox")", R"("spaceUsed":5,)",
     get("space/?type=")},
    {"getSpace", "full", R"({"type":"1","ownerId":"","containerId":"CONTAINER"})", success + R"("data":{)",
     R"("capacity":10737418240,"spaceUsed":5,"containerId":"CONTAINER")",
     get("space/?type=1&containerId=CONTAINER")},
    {"getSpace", "emptyContainer", R"({"containerId":""})", success, "", get("space/?type=&containerId=")},
    {"getSpace", "ofAnother", R"({"type":"1","ownerId":"101"})", failure(13000403, "only an administrator"),
     "", get("space/101?type=1")},

    {"getUserById", "absent", absent, refused},
    {"getUserById", "fresh", "{}", refused},
    {"getUserById", "full", R"({"userId":"102"})",
     success + R"("data":{"id":102,"name":"Ben Bloom","userId":"102","deptId":2,"deptName":"Letters",)",
     R"("role":0,"status":0})", get("users/102")},
    {"getUserById", "unknown", R"({"userId":"none"})", failure(13000400, "the user id"), "",
     get("users/none")},

    {"getUserList", "absent", absent, refused},
    {"getUserList", "full", R"({"deptId":"3","isDirect":false,"offset":"1","limit":"1","keyWord":"E"})",
     success + R"("list":[{"id":106,"name":"Freya Ford")", R"(],"total":2,)",
     get("userList?deptId=3&isDirect=false&offset=1&limit=1&keyWord=E")},
    {"getUserList", "emptyDepartment", R"({"deptId":"","isDirect":true})",
     success + R"("list":[{"id":101,"name":"Anna Arden")", R"("name":"someone")",
     get("userList?isDirect=true")},

    {"updateUser", "absent", absent, refused},
    {"updateUser", "fresh", "{}", refused},
    {"updateUser", "withoutChange", R"({"userId":"102"})", refused},
    {"updateUser", "full", R"({"userId":"102","userBaseInfo":{"deptId":4,"role":0,"status":0}})",
     failure(13000403, "only an administrator"), "", remove("users/102")},

    {"deleteUser", "absent", absent, refused},
    {"deleteUser", "fresh", "{}", refused},
    {"deleteUser", "full", R"({"userId":"102"})", failure(13000403, "only an administrator"), "",
     remove("users/102")},

    {"batchGetSpace", "absent", absent, failure(13000404, "there is no endpoint /"), "", "POST /"},
    {"batchGetSpace", "fresh", "{}", failure(13000400, R"(\"batchGetSpaceReq\" is missing)"), "",
     post("space/batchGetSpace")},
    {"batchGetSpace", "full", R"({"batchGetSpaceReq":[{"ownerId":"","type":1},{"ownerId":"101","type":1}]})",
     success + R"("batchGetSpaceResponse":[{"msg":"success","code":0,"date":{"type":1,)",
     R"("code":13000403}])", post("space/batchGetSpace")},
};

INSTANTIATE_TEST_SUITE_P(OfUsersAndSpace, CallRow, testing::ValuesIn(userRows), nameOf);

class CallUsersTest : public CallServiceTest {
  protected:
    /// A call by the administrator of the organisation.
    Outcome asAnna(const std::string& operation, const std::string& record) const {
        const auto file = (home_ / "anna").string();
        EXPECT_EQ(run({"sign-in", "--code", "anna", "--save", file}, settings()).status, 0);
        return run({"call", operation, record, "--json", "--token-file", file}, settings());
    }
};

TEST_F(CallUsersTest, EveryOperationHasItsRows) {
    EXPECT_EQ(operationsIn(userRows), operationsOf({"IUser", "ISpace"}));
}

TEST_F(CallUsersTest, AnAdministratorChangesAUserAndDeletesThem) {
    EXPECT_THAT(asAnna("updateUser", R"({"userId":"102","userBaseInfo":{"deptId":4}})").lines,
                ElementsAre(done));
    EXPECT_THAT(call("getUserById", R"({"userId":"102"})").output, HasSubstr(R"("deptName":"Bindery")"));
    EXPECT_THAT(asAnna("deleteUser", R"({"userId":"102"})").lines, ElementsAre(done));
    EXPECT_THAT(call("getUserById", R"({"userId":"102"})").output, StartsWith(failure(13000404, "")));
}

TEST_F(CallUsersTest, AListThatDoesNotSayWhetherItIsDirectEndsTheProcess) {
    const auto before = journal();
    const auto result = call("getUserList", "{}");
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.error, HasSubstr("isDirect is absent"));
    EXPECT_EQ(journal(), before) << "nothing is sent";
}

}  // namespace
}  // namespace quillbox_test::call_users
