#include "tests/cli/cloud_test.h"

namespace quillbox_test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;
using testing::StartsWith;

class ShareCommandsTest : public CloudTest {
  protected:
    ShareCommandsTest() {
        make("tree/a.txt", "hello");
        make("tree/b.txt", "world");
        EXPECT_EQ(json({"upload", "tree"}).status, 0);
        folder_ = idOf("tree");
        file_ = idOf("a.txt", folder_);
    }

    std::string folder_;
    std::string file_;
};

// ---- links

TEST_F(ShareCommandsTest, ALinkIsItsAddressForPeople) {
    const auto made = text({"share", folder_, file_});
    EXPECT_EQ(made.status, 0) << made.error;
    EXPECT_THAT(made.output, MatchesRegex("http://127.0.0.1:[0-9]+/s/[0-9a-f]+\n"));
    const auto address = made.output.substr(0, made.output.size() - 1);
    EXPECT_THAT(quillboxd_test::send("GET", address).body, HasSubstr("tree and 1 more"));
}

TEST_F(ShareCommandsTest, ALinkTakesACodeAndAnEnd) {
    const auto made = json({"share", file_, "--code", "k3x9", "--expires", "2199-01-02T03:04:05Z"});
    EXPECT_THAT(made.lines, ElementsAre(AllOf(StartsWith(R"({"event":"share","id":"1","url":"http://)"),
                                              HasSubstr(R"("code":"k3x9","expires":"2199-01-02T03:04:05)"))));
    EXPECT_THAT(json({"share", file_, "--days", "3"}).lines, ElementsAre(HasSubstr(R"("expires":"20)")));
    const auto refused = text({"share", file_, "--expires", "tomorrow"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.error, HasSubstr("must be a time such as"));
    EXPECT_EQ(text({"share", "none"}).status, 1);
    EXPECT_EQ(text({"share"}).status, 2);
}

TEST_F(ShareCommandsTest, LinksAreListed) {
    EXPECT_THAT(text({"shares"}).output, IsEmpty());
    text({"share", file_});
    json({"share", folder_, "--expires", "2199-01-02T03:04:05Z", "--comment", "for you"});
    EXPECT_THAT(
        text({"shares"}).lines,
        ElementsAre(MatchesRegex("2  http://.*  tree  until 2199-01-02T03:04:05.000Z  views 0, downloads 0"),
                    MatchesRegex("1  http://.*  a.txt  without an end  views 0, downloads 0")));
    EXPECT_THAT(json({"shares"}).lines.at(0),
                AllOf(StartsWith(R"({"event":"share","id":"2")"), HasSubstr(R"("comment":"for you")")));
    quillboxd_test::send("DELETE", service_.url() + "/_dev/shares");
    EXPECT_THAT(text({"shares"}).output, HasSubstr("  expired  "));
}

TEST_F(ShareCommandsTest, ALinkWithoutFilesSaysSo) {
    text({"share", file_});
    EXPECT_EQ(json({"remove", file_}).status, 0);
    EXPECT_THAT(text({"shares"}).output, HasSubstr("its files are gone"));
}

TEST_F(ShareCommandsTest, LinksAreEndedOneByOne) {
    text({"share", file_});
    const auto ended = text({"unshare", "1", "999"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.output, "ok    1\nfailed  999  13000404 there is no share of this id\n");
    EXPECT_THAT(json({"shares"}).lines, IsEmpty());
    text({"share", file_});
    EXPECT_THAT(json({"unshare", "2"}).lines, ElementsAre(R"({"event":"success","id":"2"})"));
}

TEST_F(ShareCommandsTest, TheListOfLinksComesInPages) {
    for (int number = 0; number < 201; ++number) {
        quillboxd_test::send("POST", service_.url() + "/quillbox/ose/v1/share", {"Authorization: " + token()},
                             R"({"fileIds":[")" + file_ + "\"]}");
    }
    EXPECT_THAT(json({"shares"}).lines, SizeIs(201));
}

TEST_F(ShareCommandsTest, AListWhoseCursorLeadsToItselfIsAFailure) {
    plan(R"({"path":"/quillbox/ose/v1/share","kind":"status","status":200,"times":2,)"
         R"("body":{"code":0,"nextCursor":"x","shareLinks":[]}})");
    const auto result = text({"shares"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("the list has no end"));
}

// ---- albums

TEST_F(ShareCommandsTest, FilesGoIntoAnAlbumAndAreSeen) {
    EXPECT_EQ(text({"album-make", "summer"}).output, "1\n");
    EXPECT_EQ(text({"album-add", "1", file_}).output, "ok    " + file_ + "\n");
    EXPECT_EQ(text({"albums"}).output, "1  summer\n");
    EXPECT_EQ(text({"album", "1"}).output, file_ + "  a.txt\n");
    EXPECT_THAT(json({"albums"}).lines,
                ElementsAre(StartsWith(R"({"event":"album","id":"1","name":"summer")")));
    EXPECT_THAT(json({"album", "1"}).lines,
                ElementsAre(AllOf(HasSubstr(R"("name":"a.txt")"), HasSubstr(R"("url":"http://)"))));
    EXPECT_THAT(json({"album-add", "1", file_}).lines,
                ElementsAre(R"({"event":"success","album":"1","id":")" + file_ + "\"}"));
}

TEST_F(ShareCommandsTest, AnAlbumOfAFolderHoldsItsFiles) {
    EXPECT_THAT(json({"album-make", "tree", "--folder", folder_}).lines,
                ElementsAre(R"({"event":"success","id":"1","name":"tree"})"));
    EXPECT_THAT(text({"album", "1"}).lines, SizeIs(2));
}

TEST_F(ShareCommandsTest, WhatCannotGoIntoAnAlbumIsRefused) {
    text({"album-make", "summer"});
    const auto folder = text({"album-add", "1", file_, folder_});
    EXPECT_EQ(folder.status, 1);
    EXPECT_THAT(folder.error, HasSubstr("is a folder, not a file"));
    EXPECT_THAT(text({"album", "1"}).output, IsEmpty());
    EXPECT_EQ(text({"album-make", "summer"}).status, 1);
    EXPECT_EQ(text({"album", "999"}).status, 1);
    EXPECT_EQ(text({"album-add", "1"}).status, 2);
}

TEST_F(ShareCommandsTest, TheListOfAlbumsComesInPages) {
    for (int number = 0; number < 201; ++number) {
        quillboxd_test::send("POST", service_.url() + "/quillbox/ose/v1/album/create",
                             {"Authorization: " + token()}, R"({"name":")" + std::to_string(number) + "\"}");
    }
    EXPECT_THAT(json({"albums"}).lines, SizeIs(201));
}

}  // namespace
}  // namespace quillbox_test
