#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/cli/cloud_test.h"
#include "tests/support/scripted_server.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

mode_t modeOf(const fs::path& file) {
    struct stat status {};
    ::stat(file.c_str(), &status);
    return status.st_mode & 0777;
}

class PeopleCommandsTest : public CloudTest {};

TEST_F(PeopleCommandsTest, SigningInKeepsTheTokenInAFileOfTheUsersOwn) {
    const auto result = run({"sign-in", "--code", "someone else"}, settings());
    EXPECT_EQ(result.status, 0);
    const auto file = home_ / "state/token";
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_THAT(result.output, HasSubstr(file.string()));
    auto token = contentOf(file);
    token.pop_back();
    EXPECT_THAT(result.output + result.error, Not(HasSubstr(token)));
    EXPECT_NE(token, this->token());
}

TEST_F(PeopleCommandsTest, ARefusedSignInIsAFailure) {
    const auto result = run({"sign-in", "--code", ""}, settings());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("the service refused the sign-in"));
    EXPECT_FALSE(fs::exists(home_ / "state/token"));
}

TEST_F(PeopleCommandsTest, ATokenThatCannotBeKeptIsAFailure) {
    const auto result =
        run({"sign-in", "--code", "x", "--save", "/proc/nothing/token", "--json"}, settings());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(HasSubstr(R"("event":"failure")")));
    EXPECT_EQ(
        result.error,
        "quillbox: the token cannot be kept in /proc/nothing/token: No such file or directory; name another "
        "file with --save\n");
}

TEST_F(PeopleCommandsTest, AFolderIsListedForPeopleAndForPrograms) {
    make("a.txt", "hello");
    json({"upload", "a.txt"});
    text({"mkdir", "folder"});
    const auto people = text({"ls"});
    EXPECT_THAT(people.output, HasSubstr("      5 B  " + idOf("a.txt") + "  a.txt\n"));
    EXPECT_THAT(people.output, HasSubstr("   folder  " + idOf("folder") + "  folder/\n"));
    EXPECT_THAT(json({"ls"}).lines, Contains(HasSubstr(R"("name":"a.txt","folder":false,"size":5)")));
    EXPECT_THAT(json({"ls", idOf("folder")}).lines, IsEmpty());
}

TEST_F(PeopleCommandsTest, AFolderIsMadeOnce) {
    const auto first = json({"mkdir", "folder"});
    const auto second = json({"mkdir", "folder"});
    EXPECT_EQ(first.lines, second.lines);
    const auto inner = json({"mkdir", "inner", "--parent", valueOf(first.lines.at(0), "id")});
    EXPECT_EQ(inner.status, 0);
    EXPECT_EQ(idOf("inner", idOf("folder")), valueOf(inner.lines.at(0), "id"));
}

TEST_F(PeopleCommandsTest, NamesOfManyKindsAreNames) {
    for (const std::string name :
         {"new\nline", "中文 😀", " ", "\"quotes\" and \\", "--json", "[a,b]", "#?%20&"}) {
        const auto made = run({"mkdir", "--json", "--", name}, signedIn());
        EXPECT_EQ(made.status, 0) << name;
        EXPECT_THAT(run({"search", "--json", "--", name}, signedIn()).lines,
                    Contains(HasSubstr(valueOf(made.lines.at(0), "id"))));
    }
    const auto listed = text({"ls"});
    EXPECT_EQ(std::count(listed.output.begin(), listed.output.end(), '\n'), 7) << listed.output;
    EXPECT_THAT(listed.output, AllOf(HasSubstr("  new\\nline/\n"), HasSubstr("  中文 😀/\n")));
}

TEST_F(PeopleCommandsTest, ANameThatCannotBeIsAFailureWithItsReason) {
    EXPECT_EQ(
        text({"mkdir", "a/b"}).error,
        "quillbox: the service refused the folder \"a/b\": 13000400 the name \"a/b\" holds a slash or a "
        "zero byte\n");
    EXPECT_THAT(text({"mkdir", std::string(5000, 'n')}).error, HasSubstr("is longer than 1000 bytes"));
    for (const auto& line : std::vector<std::vector<std::string>>{
             {"mkdir", "\xff"}, {"rename", "1", "\xff"}, {"search", "\xff"}}) {
        const auto result = text(line);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.error, HasSubstr("UTF-8"));
        EXPECT_THAT(result.error, Not(HasSubstr("\xff")));
    }
}

TEST_F(PeopleCommandsTest, AReaderThatLeavesEarlyEndsTheListWithSuccess) {
    json({"mkdir", "folder"});
    auto settings = signedIn();
    settings.readerGone = true;
    for (const auto* command : {"ls", "search"}) {
        std::vector<std::string> line{command};
        if (line[0] == "search") line.emplace_back("folder");
        const auto result = run(line, settings);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.error, IsEmpty());
    }
}

TEST_F(PeopleCommandsTest, AFileGetsAnotherName) {
    make("before", "x");
    json({"upload", "before"});
    EXPECT_EQ(text({"rename", idOf("before"), "after"}).status, 0);
    EXPECT_EQ(idOf("before"), "");
    EXPECT_NE(idOf("after"), "");
    EXPECT_EQ(text({"rename", "unknown", "x"}).status, 1);
}

TEST_F(PeopleCommandsTest, AWordOfANameIsFoundAtAnyDepth) {
    make("tree/inner/needle.txt", "x");
    make("tree/hay", "y");
    json({"upload", "tree"});
    EXPECT_THAT(json({"search", "needle"}).lines,
                ElementsAre(HasSubstr(
                    R"("name":"needle.txt","folder":false,"size":1,"path":"/tree/inner/needle.txt"})")));
    EXPECT_THAT(json({"search", "nothing"}).lines, IsEmpty());
}

TEST_F(PeopleCommandsTest, PathAndDetailTellOfOneItem) {
    make("tree/a", "hello");
    json({"upload", "tree"});
    const auto id = idOf("a", idOf("tree"));
    EXPECT_THAT(text({"path", id}).output, HasSubstr("tree/a"));
    EXPECT_THAT(text({"detail", id}).output, HasSubstr("\"fileName\": \"a\""));
    EXPECT_THAT(json({"detail", id}).output, HasSubstr(R"("size":5)"));
    EXPECT_EQ(text({"detail", "unknown"}).status, 1);
}

TEST_F(PeopleCommandsTest, TheDoctorFindsNothingWrongWhereNothingIs) {
    const auto result = json({"doctor"});
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_THAT(
        result.lines,
        Contains(
            R"({"event":"check","name":"answer","state":"ok","detail":"the service answers and accepts the token"})"));
    EXPECT_THAT(result.output, Not(HasSubstr("\"problem\"")));
}

TEST(DoctorTest, TheCertificateOfTheHostIsLookedAt) {
    test_support::ScriptedServer::Options tls;
    tls.tls = true;
    const test_support::ScriptedServer server(
        [](test_support::Exchange& exchange) { exchange.answer(200, R"({"code":0})"); }, tls);
    const std::vector<std::string> line{"doctor", "--json", "--host", server.url(), "--token", "some-token"};
    const auto distrusted = run(line);
    EXPECT_EQ(distrusted.status, 1);
    EXPECT_THAT(distrusted.lines,
                Contains(AllOf(HasSubstr(R"("name":"TLS","state":"problem")"), HasSubstr("with --cacert"))));
    auto trusting = line;
    trusting.insert(trusting.end(), {"--cacert", server.certificateFile().string()});
    const auto trusted = run(trusting);
    EXPECT_EQ(trusted.status, 0) << trusted.output;
    EXPECT_THAT(trusted.lines, Contains(HasSubstr(R"("name":"TLS","state":"ok")")));
}

TEST_F(PeopleCommandsTest, TheDoctorNamesWhatIsWrongAndHowToMendIt) {
    auto wrongToken = settings();
    wrongToken.environment["QUILLBOX_TOKEN"] = "wrong-token";
    const auto refused = run({"doctor"}, wrongToken);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.output, HasSubstr("failed  answer: the service refuses: "));
    EXPECT_THAT(refused.output, HasSubstr("quillbox sign-in"));

    service_.kill();
    EXPECT_THAT(json({"doctor"}).output, HasSubstr("look at host and port"));
    EXPECT_THAT(json({"doctor", "--host", "http://nowhere.invalid"}).output,
                HasSubstr("nowhere.invalid has no address"));
    EXPECT_THAT(json({"doctor", "--host", service_.url() + "/"}).output, HasSubstr("ends with a slash"));
    EXPECT_THAT(json({"doctor", "--host", ""}).output, HasSubstr("is no address"));
    EXPECT_THAT(json({"doctor", "--state", "/proc/nothing"}).output,
                HasSubstr("another folder with --state"));
}

}  // namespace
}  // namespace quillbox_test
