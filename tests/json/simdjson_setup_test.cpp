#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>

#include "baseapi/json/codec.h"
#include "baseapi/json/utf8.h"

namespace baseapi {
namespace {

bool readsText() {
    std::string text = R"({"a":[1,"é"]})";
    return parseJSON(text).has_value() && isValidUTF8("é");
}

/// What a worker of the library may still do when main has been left.
void readInAWorker() {
    bool read = false;
    std::thread([&] { read = readsText(); }).join();
    std::_Exit(read ? 0 : 1);
}

TEST(SimdjsonSetup, TextsAreReadWhenTheStaticObjectsAreGone) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto leaveMain = [] {
        // What is registered first runs last.
        std::atexit(readInAWorker);
        readsText();
        std::exit(2);
    };
    EXPECT_EXIT(leaveMain(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace baseapi
