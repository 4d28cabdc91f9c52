#include "cli/operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/problems.h"

namespace quillbox {
namespace {

std::string whyUnusable(std::string_view operation, OperationArguments arguments) {
    try {
        operationNamed(operation).call(std::move(arguments), [](const OperationResult&) {});
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
    EXPECT_THAT(
        names,
        testing::ElementsAre(
            "getToken", "getSpace", "getUserById", "getUserList", "updateUser", "deleteUser",
            "getAccessFiles", "createDirectory", "fileComplete", "fileRename", "filesCreate", "fileSearch",
            "filesList", "filesPath", "filesStatsDir", "getDownloadUrl", "getFileDetail", "getUploadUrl",
            "getFilePreviewUrl", "getShares", "createShare", "cancelShare", "getShareDetail",
            "modifyShareDetail", "getShareFiles", "getStarFiles", "getStarBatch", "cancelJobs", "createJobs",
            "getJobDetailById", "getJobs", "standardPackages", "standardPackagesOrders", "operationBatch",
            "notifyPackageExpire", "unbindDevice", "bindDevice", "getDevices", "createBackupLock",
            "keepBackupLock", "deleteBackupLock", "backupComplete", "backupDelete", "backupGet",
            "createRecord", "getRecords", "getRecordFiles", "createRecordFile", "addScope", "deleteScope",
            "getScope", "listConfigInfos", "getConfigInfo", "addConfigInfo", "updateConfigInfo",
            "shareFolderCreate", "shareFolderRename", "shareFolderDelete", "shareFolderDetail",
            "shareFolderList", "shareFolderAlbumList", "albumCreate", "albumUpdate", "albumDelete",
            "albumList", "albumContentList", "albumContentAdd", "albumContentDelete", "updateRevision",
            "batchGetSpace", "createSyncFolder", "closeSyncFolder", "getSyncFolderStartCursor",
            "listChangeSyncFolder", "walkFileSyncFolder"));
}

TEST(Operations, OneWithoutARecordNamesNone) {
    for (const auto* name : {"getDevices", "unbindDevice", "keepBackupLock", "deleteBackupLock"})
        EXPECT_EQ(operationNamed(name).request, std::nullopt) << name;
    EXPECT_EQ(operationNamed("createRecord").request, "CreateRecordBean");
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
    EXPECT_THAT(whyUnusable("filesList", {R"({"pageInfo":{"pageSize":"10"}})"}),
                testing::AllOf(testing::HasSubstr("pageInfo.pageSize"), testing::HasSubstr("FilesListBean")));
    EXPECT_NE(whyUnusable("filesList", {"[1]"}), "");
    EXPECT_NE(whyUnusable("filesList", {"5"}), "");
}

TEST(Operations, WhatIsNoJsonCannotBeUsed) {
    for (const auto* text : {"", "{", "{\"a\":}", "nonsense", "{} {}"})
        EXPECT_NE(whyUnusable("filesList", {text}), "") << text;
}

TEST(Operations, WhatAnOperationDoesNotTakeCannotBeUsed) {
    EXPECT_THAT(whyUnusable("getDevices", {"{}"}), testing::HasSubstr("getDevices takes no record"));
    EXPECT_THAT(whyUnusable("keepBackupLock", {"{}", "l"}), testing::HasSubstr("takes no record"));
    EXPECT_THAT(whyUnusable("getDevices", {{}, ""}), testing::HasSubstr("takes no lock id"));
    EXPECT_THAT(whyUnusable("getRecords", {"{}", "l"}), testing::HasSubstr("takes no lock id"));
    EXPECT_THAT(whyUnusable("createRecord", {"{}", "l", 1}), testing::HasSubstr("takes no device id"));
}

TEST(Operations, ADeviceIdThatIsMissingCannotBeUsed) {
    EXPECT_THAT(whyUnusable("unbindDevice", {}), testing::HasSubstr("--device-id"));
}

}  // namespace
}  // namespace quillbox
