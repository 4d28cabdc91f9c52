#include "hostkit/media_type.h"

#include <gtest/gtest.h>

namespace {

using hostkit::mediaTypeOf;
using MediaType = baseapi::PhotoAsset::MediaType;

TEST(MediaType, IsToldByTheSuffixInAnyCase) {
    for (const auto* name :
         {"a.jpg", "a.JPEG", "a.Png", "a.gif", "a.HEIC", "a.heif", "a.webp", "a.tif", "a.tiff", "a.bmp",
          "a.dng", "a.CR2", "a.nef", "a.arw", ".hidden.jpg", "a.b.jpg", " .jpg"})
        EXPECT_EQ(mediaTypeOf(name), MediaType::image) << name;
    for (const auto* name :
         {"a.mp4", "a.MOV", "a.m4v", "a.3GP", "a.avi", "a.mkv", "a.webm", "a.mts", "a.wmv"})
        EXPECT_EQ(mediaTypeOf(name), MediaType::video) << name;
}

TEST(MediaType, IsUnknownForEveryOtherName) {
    for (const auto* name :
         {"", "jpg", ".jpg", "a.jpg~", "a.jpg.txt", "a.jpgx", "a.", "a.mp3", "a.txt", "a.svg", "a.jpg "})
        EXPECT_EQ(mediaTypeOf(name), MediaType::unknown) << name;
}

TEST(MediaType, TakesNamesAsBytes) {
    EXPECT_EQ(mediaTypeOf("\xff\xfe\n\".JPG"), MediaType::image);
    EXPECT_EQ(mediaTypeOf("照片.jpg"), MediaType::image);
    EXPECT_EQ(mediaTypeOf("a.jp\xff"), MediaType::unknown);
}

}  // namespace
