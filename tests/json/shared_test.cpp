#include "baseapi/json/shared.h"

#include <gtest/gtest.h>

#include <string>

namespace baseapi {
namespace {

TEST(Shared, IsAbsentAtFirst) {
    const Shared<std::string> empty;
    EXPECT_FALSE(empty);
    EXPECT_FALSE(empty.has_value());
}

TEST(Shared, IsTheSameObjectInACopy) {
    const Shared<std::string> first(std::string("a"));
    const Shared<std::string> copy = first;
    *copy += "b";
    EXPECT_EQ(*first, "ab");
    EXPECT_EQ(&*first, &*copy);
}

TEST(Shared, GivesACopyItsOwnValueOnlyWhenItIsReplaced) {
    const Shared<std::string> first(std::string("a"));
    Shared<std::string> copy = first;
    copy.emplace() = "b";
    EXPECT_EQ(*first, "a");
    copy.reset();
    EXPECT_TRUE(first);
}

TEST(Shared, ComparesByValue) {
    EXPECT_EQ(Shared<std::string>(std::string("a")), Shared<std::string>(std::string("a")));
    EXPECT_FALSE(Shared<std::string>(std::string("a")) == Shared<std::string>(std::string("b")));
    EXPECT_FALSE(Shared<std::string>(std::string("a")) == Shared<std::string>());
    EXPECT_EQ(Shared<std::string>(), Shared<std::string>());
}

}  // namespace
}  // namespace baseapi
