#include "baseapi/core/guarded.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace baseapi {
namespace {

TEST(Guarded, GivesTheOldTextOrTheNewOneNeverHalfOfBoth) {
    const std::string one(1000, 'a');
    const std::string other(2000, 'b');
    Guarded<std::string> text(one);
    std::thread writer([&] {
        for (int i = 0; i < 2000; ++i) text = i % 2 == 0 ? other : one;
    });
    for (int i = 0; i < 2000; ++i) {
        const auto seen = text.get();
        ASSERT_TRUE(seen == one || seen == other);
    }
    writer.join();
}

TEST(Guarded, IsChangedInPlace) {
    Guarded<std::string> text("a");
    text.modify([](std::string& it) { it += "b"; });
    EXPECT_EQ(text.get(), "ab");
}

}  // namespace
}  // namespace baseapi
