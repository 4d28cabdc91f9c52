#include "baseapi/transfer/sha256_result.h"

#include <gtest/gtest.h>

#include "baseapi/json/codec.h"

namespace baseapi {
namespace {

std::optional<Sha256Result> decoded(std::string text) {
    Sha256Result result;
    if (decode(text, result)) return std::nullopt;
    return result;
}

TEST(Sha256Result, WritesItsKeysInOrder) {
    const Sha256Result result{
        "image/png", 5, "abc", {{1, 0, 5, {{1, 4294967295U}}}, {2, 5, 0, std::nullopt}}};
    EXPECT_EQ(encode(result), R"({"mimeType":"image/png","size":5,"hash":"abc","parts":[)"
                              R"({"partNumber":1,"partOffset":0,"partSize":5,"hashCtx":[1,4294967295]},)"
                              R"({"partNumber":2,"partOffset":5,"partSize":0}]})");
    EXPECT_EQ(decoded(*encode(result)), result);
}

TEST(Sha256Result, MayLackTheMimeTypeAndHaveNoParts) {
    const auto result = decoded(R"({"size":0,"hash":"","parts":[]})");
    ASSERT_TRUE(result);
    EXPECT_FALSE(result->mimeType);
    EXPECT_TRUE(result->parts.empty());
}

TEST(Sha256Result, MustHaveEverythingElse) {
    EXPECT_FALSE(decoded(R"({"hash":"","parts":[]})"));
    EXPECT_FALSE(decoded(R"({"size":0,"parts":[]})"));
    EXPECT_FALSE(decoded(R"({"size":0,"hash":""})"));
    EXPECT_FALSE(decoded(R"({"size":0,"hash":"","parts":[{"partNumber":1,"partOffset":0}]})"));
    EXPECT_FALSE(decoded(R"({"size":0,"hash":"","parts":[{"partNumber":1,"partSize":0}]})"));
    EXPECT_FALSE(decoded(R"({"size":0,"hash":"","parts":[{"partOffset":0,"partSize":0}]})"));
    EXPECT_FALSE(decoded(
        R"({"size":0,"hash":"","parts":[{"partNumber":1,"partOffset":0,"partSize":0,"hashCtx":[-1]}]})"));
}

TEST(Sha256Result, GivesPartsThatAreNumberedByTheirPlaceAndKeepTheirOrder) {
    const auto infos = multiPartInfos({{7, 100, 10, {{1, 2}}}, {7, 0, 100, std::nullopt}, {-1, 50, 0, {{}}}});
    ASSERT_EQ(infos.size(), 3U);
    EXPECT_EQ(infos[0],
              (MultiPartInfo{.partNumber = 1, .partSize = 10, .partOffset = 100, .hashCtx = {{1, 2}}}));
    EXPECT_EQ(infos[1], (MultiPartInfo{.partNumber = 2, .partSize = 100, .partOffset = 0}));
    EXPECT_EQ(infos[2].partNumber, 3);
    EXPECT_TRUE(infos[2].hashCtx && infos[2].hashCtx->empty());
    EXPECT_FALSE(infos[0].uploadUrl);
    EXPECT_FALSE(infos[0].partId);
    EXPECT_TRUE(multiPartInfos({}).empty());
}

}  // namespace
}  // namespace baseapi
