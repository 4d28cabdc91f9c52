#include "baseapi/transfer/file_type.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace baseapi {
namespace {

struct Row {
    FileType type;
    std::string_view rawValue;
    std::string_view code;
};

constexpr std::array<Row, 11> rows{{{FileType::folder, "folder", "10"},
                                    {FileType::picture, "picture", "15"},
                                    {FileType::video, "video", "20"},
                                    {FileType::word, "word", "26"},
                                    {FileType::excel, "excel", "27"},
                                    {FileType::ppt, "ppt", "28"},
                                    {FileType::audio, "audio", "30"},
                                    {FileType::archive, "archive", "35"},
                                    {FileType::application, "application", "40"},
                                    {FileType::pdf, "pdf", "45"},
                                    {FileType::other, "other", "45"}}};

TEST(FileType, HasANameAndACode) {
    for (const auto& row : rows) {
        EXPECT_EQ(rawValue(row.type), row.rawValue);
        EXPECT_EQ(fileTypeCode(row.type), row.code);
        EXPECT_EQ(fileTypeOf(row.rawValue), row.type);
    }
}

TEST(FileType, IsNoneForAnUnknownName) {
    EXPECT_FALSE(fileTypeOf("Picture"));
    EXPECT_FALSE(fileTypeOf(""));
}

}  // namespace
}  // namespace baseapi
