#include "cli/operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/problems.h"

namespace quillbox {
namespace {

std::string whyUnusable(std::string_view operation, std::optional<std::string> record) {
    try {
        operationNamed(operation).call(std::move(record), [](const OperationResult&) {});
    } catch (const UsageError& error) {
        return error.text;
    }
    return {};
}

TEST(Operations, EachOneNamesItsInterfaceAndRecords) {
    const auto& operation = operationNamed("filesList");
    EXPECT_EQ(operation.interface, "IFile");
    EXPECT_EQ(operation.request, "FilesListBean");
    EXPECT_EQ(operation.response, "FilesListResponse");
}

TEST(Operations, AllOfTheInterfacesAreThereInTheirOrder) {
    std::vector<std::string> names;
    for (const auto& operation : operations()) names.emplace_back(operation.name);
    EXPECT_THAT(names, testing::ElementsAre("getToken", "getAccessFiles", "createDirectory", "fileComplete",
                                            "fileRename", "filesCreate", "fileSearch", "filesList",
                                            "filesPath", "filesStatsDir", "getDownloadUrl", "getFileDetail",
                                            "getUploadUrl", "getFilePreviewUrl"));
}

TEST(Operations, AnUnknownNameCannotBeUsed) {
    EXPECT_THROW(operationNamed("nothing"), UsageError);
    try {
        operationNamed("fileslist");
    } catch (const UsageError& error) {
        EXPECT_EQ(error.text, "there is no operation fileslist; did you mean filesList?");
    }
}

TEST(Operations, AWrongTypeCannotBeUsedAndItsPlaceIsNamed) {
    EXPECT_THAT(whyUnusable("filesList", R"({"pageInfo":{"pageSize":"10"}})"),
                testing::AllOf(testing::HasSubstr("pageInfo.pageSize"), testing::HasSubstr("FilesListBean")));
    EXPECT_NE(whyUnusable("filesList", "[1]"), "");
    EXPECT_NE(whyUnusable("filesList", "5"), "");
}

TEST(Operations, WhatIsNoJsonCannotBeUsed) {
    for (const auto* text : {"", "{", "{\"a\":}", "nonsense", "{} {}"})
        EXPECT_NE(whyUnusable("filesList", text), "") << text;
}

}  // namespace
}  // namespace quillbox
