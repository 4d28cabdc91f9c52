#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>
#include <set>

#include "baseapi/platform/mime_types.h"
#include "baseapi/platform/sha256.h"
#include "baseapi/platform/uuid.h"
#include "tests/support/temporary_folder.h"

namespace baseapi {
namespace {

TEST(Sha256, IsTheDigestOfTheStandard) {
    EXPECT_EQ(sha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(sha256Hex(std::string(1'000'000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    const auto digest = sha256("abc");
    EXPECT_EQ(digest.front(), 0xba);
    EXPECT_EQ(digest.back(), 0xad);
}

TEST(RandomUuid, HasTheCanonicalFormInUpperCase) {
    std::set<std::string> seen;
    for (int i = 0; i < 1'000; ++i) {
        const auto uuid = randomUuid();
        // Version 4, and the variant that the standard gives it.
        EXPECT_THAT(uuid, testing::MatchesRegex(
                              "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

class MimeTypes : public testing::Test {
  protected:
    void SetUp() override {
        write("home",
              "50:type/home:*.mine\n"
              "40:type/home-light:*.weighed\n");
        write("shared",
              "# a comment\n"
              "50:type/one:*.one\n"
              "80:type/heavy:*.one\n"
              "50:type/light:*.one\n"
              "50:type/shared:*.mine\n"
              "60:type/shared-heavy:*.weighed\n"
              "50:type/tar:*.tar.one\n"
              "50:type/lower:*.k:cs\n"
              "50:type/upper:*.K:cs\n"
              "50:type/mixed:*.MiX\n"
              "50:type/glob:*.so.[0-9]*\n"
              "50:type/literal:makefile\n"
              "0:type/none:__NOGLOBS__\n"
              "broken line\n"
              "x:type/x:*.broken\n");
        ::setenv("XDG_DATA_HOME", (folder / "home").c_str(), 1);
        ::setenv("XDG_DATA_DIRS", ("/nonexistent::" + (folder / "shared").string()).c_str(), 1);
    }
    void write(const std::string& name, const std::string& text) {
        std::filesystem::create_directories(folder / name / "mime");
        std::ofstream(folder / name / "mime" / "globs2") << text;
    }

    test_support::TemporaryFolder folder;
};

TEST_F(MimeTypes, ComeFromTheSharedDatabase) {
    EXPECT_EQ(mimeTypeOfSuffix("one"), "type/heavy");
    EXPECT_EQ(mimeTypeOfSuffix("ONE"), "type/heavy");
    EXPECT_EQ(mimeTypeOfSuffix("tar.one"), "type/tar");
    EXPECT_EQ(mimeTypeOfSuffix("mix"), "type/mixed");
    EXPECT_EQ(mimeTypeOfSuffix("k"), "type/lower");
    EXPECT_EQ(mimeTypeOfSuffix("K"), "type/upper");
    EXPECT_EQ(mimeTypeOfSuffix("mine"), "type/home");
    EXPECT_EQ(mimeTypeOfSuffix("weighed"), "type/shared-heavy");
    for (const auto* unknown : {"", "unknown", "broken", "makefile", "so.1", "[0-9]*", "*"}) {
        EXPECT_EQ(mimeTypeOfSuffix(unknown), std::nullopt) << unknown;
    }
}

}  // namespace
}  // namespace baseapi
