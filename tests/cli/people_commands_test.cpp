#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/cli/cloud_test.h"

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
    EXPECT_THAT(json({"search", "needle"}).lines, ElementsAre(HasSubstr(R"("name":"needle.txt")")));
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
