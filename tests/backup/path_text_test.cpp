#include "baseapi/backup/path_text.h"

#include <gtest/gtest.h>

namespace baseapi {
namespace {

TEST(PathText, TheLastComponentIsWhatFollowsTheLastSlash) {
    EXPECT_EQ(lastPathComponent("/a/b"), "b");
    EXPECT_EQ(lastPathComponent("b"), "b");
    EXPECT_EQ(lastPathComponent("/a/b//"), "b");
}

TEST(PathText, ThereIsNoLastComponentOfSlashesAlone) {
    EXPECT_EQ(lastPathComponent("/"), "");
    EXPECT_EQ(lastPathComponent("//"), "");
    EXPECT_EQ(lastPathComponent(""), "");
}

TEST(PathText, AppendingPutsOneSlashBetween) {
    EXPECT_EQ(appendingPathComponent("/a", "b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a/", "b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a//c//", "b"), "/a/c/b");
    EXPECT_EQ(appendingPathComponent("/", "b"), "/b");
}

TEST(PathText, AppendingToNothingIsTheComponent) {
    EXPECT_EQ(appendingPathComponent("", "b"), "b");
}

}  // namespace
}  // namespace baseapi
