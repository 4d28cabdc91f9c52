#include <gtest/gtest.h>

#include "baseapi/platform/mime_types.h"

namespace baseapi {
namespace {

// In a program of its own: the database is read once in the life of a process.
TEST(MimeTypesOfThisMachine, KnowTheUsualSuffixes) {
    EXPECT_EQ(mimeTypeOfSuffix("jpg"), "image/jpeg");
    EXPECT_EQ(mimeTypeOfSuffix("JPG"), "image/jpeg");
    EXPECT_EQ(mimeTypeOfSuffix("pdf"), "application/pdf");
    EXPECT_EQ(mimeTypeOfSuffix("mp4"), "video/mp4");
    EXPECT_EQ(mimeTypeOfSuffix("txt"), "text/plain");
    EXPECT_EQ(mimeTypeOfSuffix("vcf"), "text/vcard");
    EXPECT_EQ(mimeTypeOfSuffix("html"), "text/html");
    EXPECT_EQ(mimeTypeOfSuffix("c"), "text/x-csrc");
}

}  // namespace
}  // namespace baseapi
