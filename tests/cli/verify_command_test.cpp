#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/cloud_test.h"
#include "tests/support/scripted_server.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;
using test_support::Exchange;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class VerifyInCloudTest : public CloudTest {};

TEST_F(VerifyInCloudTest, EachDifferenceHasItsEvent) {
    make("tree/same", "same");
    make("tree/size", "12");
    make("tree/content", "abc");
    make("tree/gone/extra", "x");
    make("tree/inner/same", "x");
    json({"upload", "tree"});
    make("tree/size", "123");
    make("tree/content", "xyz");
    make("tree/new", "x");
    make("tree/more/new", "x");
    fs::remove_all(home_ / "tree/gone");

    const auto result = json({"verify", "tree", "--parent", "root"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines,
                UnorderedElementsAre(R"({"event":"differs","path":"tree/content","why":"sha256"})",
                                     R"({"event":"same","path":"tree/inner/same"})",
                                     R"({"event":"missing","path":"tree/more"})",
                                     R"({"event":"missing","path":"tree/new"})",
                                     R"({"event":"same","path":"tree/same"})",
                                     R"({"event":"differs","path":"tree/size","why":"size"})",
                                     R"({"event":"extra","path":"tree/gone"})"));
}

TEST_F(VerifyInCloudTest, WhatIsOnlyInTheCloudIsNoDifference) {
    make("tree/a", "a");
    make("tree/b", "b");
    json({"upload", "tree"});
    fs::remove(home_ / "tree/b");
    const auto result = json({"verify", "tree", "--parent", "root"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.lines,
                ElementsAre(R"({"event":"same","path":"tree/a"})", R"({"event":"extra","path":"tree/b"})"));
}

TEST_F(VerifyInCloudTest, AFolderOverManyPagesIsComparedWhole) {
    for (int number = 0; number < 450; ++number) make("tree/" + std::to_string(number), "x");
    make("tree/last", "other");
    ASSERT_EQ(json({"upload", "tree"}).status, 0);
    const auto result = json({"verify", "tree", "--parent", "root"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.lines, SizeIs(451));
}

TEST_F(VerifyInCloudTest, AFileIsComparedWithTheItemOfItsNameAndKind) {
    make("a", "a");
    EXPECT_THAT(json({"verify", "a", "--parent", "root"}).lines,
                ElementsAre(R"({"event":"missing","path":"a"})"));
    text({"mkdir", "a"});
    EXPECT_THAT(json({"verify", "a", "--parent", "root"}).lines,
                ElementsAre(R"({"event":"missing","path":"a"})"));
}

TEST_F(VerifyInCloudTest, WhatCannotBeReadHereIsADifference) {
    make("tree/a", "a");
    json({"upload", "tree"});
    fs::permissions(home_ / "tree/a", fs::perms::none);
    auto settings = signedIn();
    settings.withoutRootRights = true;
    const auto result = run({"verify", "tree", "--parent", "root", "--json"}, settings);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, IsEmpty());
    EXPECT_EQ(result.error, "tree/a: it cannot be compared: Permission denied\n");
}

TEST_F(VerifyInCloudTest, AnUnknownParentIsAFailure) {
    make("a", "a");
    const auto result = json({"verify", "a", "--parent", "unknown"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("the service refused the list of a folder"));
}

TEST(VerifyTest, TheDetailNamesTheHashWhereTheListDoesNot) {
    const test_support::TemporaryFolder folder;
    std::ofstream(folder / "a") << "hello";
    const test_support::ScriptedServer server([](Exchange& exchange) {
        if (exchange.request.target.ends_with("/f/detail"))
            exchange.answer(
                200,
                R"({"code":0,"sha256":"2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824"})");
        else
            exchange.answer(200, R"({"code":0,"files":[{"id":"f","fileName":"a","fileType":"45"}]})");
    });
    const auto file = (folder / "a").string();
    const auto result = run({"verify", file, "--parent", "p", "--json", "--host", server.url()});
    EXPECT_THAT(result.lines, ElementsAre(R"({"event":"same","path":")" + file + "\"}"));
    EXPECT_EQ(server.requests().at(0).body,
              R"({"type":"list","pageInfo":{"pageSize":200},"parentFileId":"p","hidden":false})");
}

TEST(VerifyTest, AListWithoutAnEndEnds) {
    const test_support::TemporaryFolder folder;
    std::ofstream(folder / "a") << "hello";
    const test_support::ScriptedServer server(
        [](Exchange& exchange) { exchange.answer(200, R"({"code":0,"files":[],"nextCursor":"again"})"); });
    const auto result = run({"verify", (folder / "a").string(), "--parent", "p", "--host", server.url()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(server.requestCount(), 2U);
}

}  // namespace
}  // namespace quillbox_test
