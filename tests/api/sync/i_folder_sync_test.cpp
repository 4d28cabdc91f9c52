#include "baseapi/api/sync/i_folder_sync.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_folder_sync {
namespace {

Sent post(const std::string& target, std::string body) {
    return {"POST", "/quillbox/ose/v1/" + target, std::move(body)};
}

const std::string create =
    R"({"container":"c","fileName":"Paintings é","hidden":true,"parentFolder":"p","fileId":"f1"})";
const std::string close = R"({"container":"c","syncDirId":"s1"})";
const std::string start = R"({"container":"c","fileId":"s1"})";
const std::string changes =
    R"({"container":"c","syncDirId":"s1","deviceId":"d1","cursor":"k1","pageSize":20})";
const std::string walk =
    R"({"containerId":"c","parentFileId":"s1","type":"t","includeHidden":true,)"
    R"("pageInfo":{"pageSize":10,"pageCursor":"k"},"sortInfo":{"sortType":1,"sortDirection":2}})";

/// What an answer to `listChangeSyncFolder` cannot be without.
const std::string noMore = R"({"hasMore":false})";

const std::vector<OperationRow> rows = {
    {"createSyncFolder", "absent", absent, refused},
    {"createSyncFolder", "fresh", "{}", post("syncDir/create", R"({"hidden":false})")},
    {"createSyncFolder", "full", create, post("syncDir/create", create)},

    {"closeSyncFolder", "absent", absent, refused},
    {"closeSyncFolder", "fresh", "{}", refused},
    {"closeSyncFolder", "full", close, post("syncDir/close", close)},
    {"closeSyncFolder", "withoutContainer", R"({"syncDirId":"s1"})",
     post("syncDir/close", R"({"syncDirId":"s1"})")},
    {"closeSyncFolder", "withoutSyncDirId", R"({"container":"c"})", refused},
    {"closeSyncFolder", "emptySyncDirId", R"({"syncDirId":""})",
     post("syncDir/close", R"({"syncDirId":""})")},

    {"getSyncFolderStartCursor", "absent", absent, refused},
    {"getSyncFolderStartCursor", "fresh", "{}", refused},
    {"getSyncFolderStartCursor", "full", start, post("syncDir/getStartCursor", start)},
    {"getSyncFolderStartCursor", "withoutContainer", R"({"fileId":"s1"})",
     post("syncDir/getStartCursor", R"({"fileId":"s1"})")},
    {"getSyncFolderStartCursor", "withoutFileId", R"({"container":"c"})", refused},
    {"getSyncFolderStartCursor", "emptyFileId", R"({"fileId":""})",
     post("syncDir/getStartCursor", R"({"fileId":""})")},

    {"listChangeSyncFolder", "absent", absent, refused},
    {"listChangeSyncFolder", "fresh", "{}", post("syncDir/listChange", "{}"), absent, 0, noMore},
    {"listChangeSyncFolder", "full", changes, post("syncDir/listChange", changes), absent, 0, noMore},

    {"walkFileSyncFolder", "absent", absent, refused},
    {"walkFileSyncFolder", "fresh", "{}", post("file/walkFile", R"({"includeHidden":false})")},
    {"walkFileSyncFolder", "full", walk, post("file/walkFile", walk)},
};

class FolderSyncOperation : public OperationTest {};

TEST_P(FolderSyncOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getfolderSyncImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IFolderSync, FolderSyncOperation, testing::ValuesIn(rows), nameOf);

TEST(IFolderSync, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IFolderSync>(),
                testing::ElementsAre("createSyncFolder", "closeSyncFolder", "getSyncFolderStartCursor",
                                     "listChangeSyncFolder", "walkFileSyncFolder"));
}

TEST(IFolderSync, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getfolderSyncImpl(), &CloudInstance::shared().getfolderSyncImpl());
}

class FolderSyncAnswer : public ServiceTest {
  protected:
    IFolderSync& folders_ = CloudInstance::shared().getfolderSyncImpl();
};

TEST_F(FolderSyncAnswer, HoldsTheFolderThatWasMadeOrFound) {
    answer_ = R"({"container":"c","fileId":"s1","fileName":"n","exist":true,"code":0,"msg":"success"})";
    EXPECT_EQ(std::get<std::string>(callOperation(folders_, "createSyncFolder", create).result), answer_);
}

TEST_F(FolderSyncAnswer, HoldsAPageOfChanges) {
    answer_ = R"({"nextCursor":"k2","hasMore":true,"fileChangeList":[{"changeType":"move","deviceId":"d2",)"
              R"("extInfo":{"moveType":1,"srcParentFileId":"p","localOperatedAt":1763757296000}}],"code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(folders_, "listChangeSyncFolder", changes).result),
              answer_);
}

TEST_F(FolderSyncAnswer, WithoutHasMoreIsAFailureInTheDecodersWords) {
    answer_ = R"({"nextCursor":"k2","fileChangeList":[],"code":0})";
    const auto failure =
        std::get<NetworkFailure>(callOperation(folders_, "listChangeSyncFolder", changes).result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_EQ(failure.message,
              "str to bean error key not found: hasMore (ListChangeResp cannot be without it)");
}

TEST_F(FolderSyncAnswer, KeepsTheServicesCodeAndMessage) {
    status_ = 410;
    answer_ = R"({"code":13000410,"msg":"the cursor is too old"})";
    const auto failure =
        std::get<NetworkFailure>(callOperation(folders_, "listChangeSyncFolder", changes).result);
    EXPECT_EQ(failure.code, 13000410);
    EXPECT_EQ(failure.message, "the cursor is too old");
}

}  // namespace
}  // namespace baseapi::i_folder_sync
