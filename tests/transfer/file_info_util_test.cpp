#include "baseapi/transfer/file_info_util.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace baseapi {
namespace {

std::string codeOf(const std::string& name) {
    return FileInfoUtil::fileTypeCode(URL::file("/folder/" + name));
}

TEST(FileInfoUtil, KnowsTheCodeOfEachSuffix) {
    const std::map<std::string, std::vector<std::string>> suffixes{
        {"15",
         {"jpeg", "jpg", "png", "jpe", "webp", "gif", "heic", "bmp", "tif", "apng", "tga", "arw", "ico",
          "avif"}},
        {"20",
         {"mov", "mp4", "mpg4", "wmv", "m4u", "3gp", "m4v", "ts", "asf", "mkv", "avi", "rmvb", "asx", "hevc",
          "prores"}},
        {"26", {"doc", "docx"}},
        {"27", {"xls", "xlsx"}},
        {"28", {"ppt", "pptx"}},
        {"30", {"mp3", "m3u", "m4a", "m4b", "m4p", "mp2", "mpga", "ogg", "wav", "wma", "flac", "aac", "ape"}},
        {"35", {"zip", "rar"}},
        {"40", {"apk", "ipa", "mpkg"}},
        {"45", {"pdf"}}};
    for (const auto& [code, list] : suffixes)
        for (const auto& suffix : list) EXPECT_EQ(codeOf("file." + suffix), code) << suffix;
}

TEST(FileInfoUtil, TakesTheSuffixAsItStands) {
    EXPECT_EQ(codeOf("file.JPG"), "45");
    EXPECT_EQ(codeOf("file.Mp4"), "45");
    EXPECT_EQ(codeOf("file.tar.zip"), "35");
}

TEST(FileInfoUtil, LooksOnlyBehindTheLastDot) {
    // "h.264" stands in the list of videos and is never met: no suffix holds a dot.
    EXPECT_EQ(codeOf("clip.h.264"), "45");
    EXPECT_EQ(codeOf("h.264"), "45");
}

TEST(FileInfoUtil, CallsAFileWithoutAKnownSuffixOther) {
    EXPECT_EQ(codeOf("file"), "45");
    EXPECT_EQ(codeOf("file."), "45");
    EXPECT_EQ(codeOf(".jpg"), "45");
    EXPECT_EQ(codeOf("file.xyz"), "45");
}

TEST(FileInfoUtil, AsksThePlatformForTheMimeType) {
    EXPECT_EQ(FileInfoUtil::mimeType("jpg"), "image/jpeg");
    EXPECT_EQ(FileInfoUtil::mimeType("JPG"), "image/jpeg");
    EXPECT_EQ(FileInfoUtil::mimeType("pdf"), "application/pdf");
}

TEST(FileInfoUtil, FallsBackToBytes) {
    EXPECT_EQ(FileInfoUtil::mimeType(""), "application/octet-stream");
    EXPECT_EQ(FileInfoUtil::mimeType("no-such-suffix"), "application/octet-stream");
}

}  // namespace
}  // namespace baseapi
