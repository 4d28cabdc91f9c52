#include "cli/folder_causes.h"

#include <gtest/gtest.h>

namespace quillbox {
namespace {

class FolderCausesTest : public testing::Test {
  protected:
    void read(std::initializer_list<std::string_view> pieces) {
        causes_.read({pieces.begin(), pieces.end()});
    }

    FolderCauses causes_;
};

TEST_F(FolderCausesTest, ARefusalIsTheCauseOfTheFolderThatIsBeingMade) {
    read({"new folder cloudPath = ", "/backup", ", name = ", "a"});
    read({"createSingleFolderSync failure code = ", "403", ", msg = ", "not here"});
    read({"new folder cloudPath = ", "/backup", ", name = ", "b"});
    EXPECT_EQ(causes_.causeFor("/backup/a"), "the service refused to make it: 403 not here");
    EXPECT_EQ(causes_.causeFor("/backup/b"), std::nullopt);
    EXPECT_EQ(causes_.causeFor("/backup"), std::nullopt);
}

TEST_F(FolderCausesTest, WhatIsInsideHasTheSameCause) {
    read({"CloudPathHelper submit path = ", "/Images"});
    read({"createDirectoryRequest failure code = ", "-1", ", msg = ", "response status code = 500"});
    EXPECT_EQ(causes_.causeFor("/Images/a/b"), "the service refused to make it: status 500");
    EXPECT_EQ(causes_.causeFor("/ImagesToo"), std::nullopt);
    EXPECT_EQ(causes_.causeFor(""), std::nullopt);
}

TEST_F(FolderCausesTest, AnAnswerThatDoesNotComeInTimeIsACause) {
    read({"new folder cloudPath = ", "/x", ", name = ", "odd, name = y"});
    read({"get single cloud path overTime"});
    EXPECT_EQ(causes_.causeFor("/x, name = odd/y"),
              "the service did not answer the request to make it in time");
}

TEST_F(FolderCausesTest, OtherLinesTellNothing) {
    read({"new folder cloudPath = ", "/x", ", name = ", "y"});
    read({"filesCreateRequest failure code = ", "1", ", msg = ", "m"});
    read({});
    EXPECT_EQ(causes_.causeFor("/x/y"), std::nullopt);
}

}  // namespace
}  // namespace quillbox
