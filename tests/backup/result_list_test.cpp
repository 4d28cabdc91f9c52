#include "baseapi/backup/result_list.h"

#include <gtest/gtest.h>

namespace baseapi {
namespace {

TEST(ResultList, WithoutUploadsAllHaveFinished) {
    const ResultList list;
    EXPECT_TRUE(list.allFinished());
    EXPECT_EQ(list.succeeded(), 0);
    EXPECT_EQ(list.failed(), 0);
}

TEST(ResultList, CountsUploadsAsTheyEnd) {
    ResultList list;
    for (const auto* key : {"a", "b", "c"}) list.add(key);
    list.finish("a", 0, "success");
    list.finish("b", 100016, "file invaild");
    EXPECT_FALSE(list.allFinished());
    EXPECT_EQ(list.succeeded(), 1);
    EXPECT_EQ(list.failed(), 1);
    list.finish("c", 0, "rapid success");
    EXPECT_TRUE(list.allFinished());
    EXPECT_EQ(list.succeeded(), 2);
}

TEST(ResultList, CountsTheLastEndOfAnUploadThatEndsTwice) {
    ResultList list;
    list.add("a");
    list.finish("a", 100016, "file invaild");
    list.finish("a", 0, "success");
    EXPECT_EQ(list.succeeded(), 1);
    EXPECT_EQ(list.failed(), 0);
    EXPECT_TRUE(list.allFinished());
}

TEST(ResultList, TwoUploadsOfOneKeyAreOneResult) {
    ResultList list;
    list.add("a");
    list.finish("a", 0, "success");
    list.add("a");
    EXPECT_FALSE(list.allFinished());
    EXPECT_EQ(list.succeeded(), 0);
    list.finish("a", 0, "exist success");
    EXPECT_TRUE(list.allFinished());
    EXPECT_EQ(list.succeeded(), 1);
}

}  // namespace
}  // namespace baseapi
