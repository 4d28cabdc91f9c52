#include "tests/cli/cloud_test.h"

namespace quillbox_test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class FavouriteCommandsTest : public CloudTest {
  protected:
    FavouriteCommandsTest() {
        make("tree/a.txt", "hello");
        EXPECT_EQ(json({"upload", "tree"}).status, 0);
        folder_ = idOf("tree");
        file_ = idOf("a.txt", folder_);
    }

    std::string folder_;
    std::string file_;
};

TEST_F(FavouriteCommandsTest, ItemsBecomeFavouritesAndAreListed) {
    EXPECT_THAT(json({"favourites"}).lines, IsEmpty());
    const auto added = text({"favourite-add", file_, folder_});
    EXPECT_EQ(added.status, 0) << added.error;
    EXPECT_EQ(added.output, "ok    " + file_ + "\nok    " + folder_ + "\n");
    EXPECT_EQ(text({"favourites"}).output, folder_ + "  /tree\n" + file_ + "  /tree/a.txt\n");
    EXPECT_THAT(
        json({"favourites"}).lines,
        ElementsAre(AllOf(HasSubstr(R"({"event":"item","id":")" + folder_), HasSubstr(R"("folder":true)")),
                    AllOf(HasSubstr(R"("name":"a.txt","folder":false,"size":5,"path":"/tree/a.txt")"),
                          HasSubstr(R"("starredTime":")"))));
}

TEST_F(FavouriteCommandsTest, AFavouriteIsOneNoMore) {
    text({"favourite-add", file_, folder_});
    EXPECT_THAT(json({"favourite-remove", folder_}).lines,
                ElementsAre(R"({"event":"success","id":")" + folder_ + R"(","favourite":false})"));
    EXPECT_EQ(text({"favourites"}).output, file_ + "  /tree/a.txt\n");
}

TEST_F(FavouriteCommandsTest, WhatCannotBeAFavouriteIsToldAndTheRestIsDone) {
    const auto result = text({"favourite-add", "none", file_});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output,
              "failed  none  13000404 there is no file or folder \"none\"\nok    " + file_ + "\n");
    EXPECT_THAT(json({"favourite-add", "root"}).lines,
                ElementsAre(R"({"event":"failure","id":"root","code":"13000403","message":)"
                            R"("the root folder is no favourite"})"));
    EXPECT_THAT(json({"favourites"}).lines, SizeIs(1));
    EXPECT_EQ(text({"favourite-add"}).status, 2);
}

TEST_F(FavouriteCommandsTest, TheListComesInPages) {
    std::vector<std::string> line{"favourite-add"};
    for (int number = 0; number < 201; ++number) {
        const auto made = quillboxd_test::send("POST", service_.url() + "/quillbox/ose/v1/directory",
                                               {"Authorization: " + token()}, R"({"fileName":"folder"})");
        line.push_back(valueOf(made.body, "id"));
    }
    EXPECT_EQ(json(line).status, 0);
    EXPECT_THAT(json({"favourites"}).lines, SizeIs(201));
}

}  // namespace
}  // namespace quillbox_test
