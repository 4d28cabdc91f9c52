#include "baseapi/api/sharefolder/i_share_folder.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_share_folder {
namespace {

const std::string prefix = "/quillbox/ose/v1/sharefolder/";

Sent get(const std::string& target) {
    return {"GET", prefix + target, absent};
}
Sent post(const std::string& target, std::string body) {
    return {"POST", prefix + target, std::move(body)};
}

// What an absent record leaves: the bare host.
const Sent bareGet{"GET", "/", absent};
const Sent barePost{"POST", "/", absent};

const std::string create = R"({"shareType":1,"containerId":"c","name":"Paintings é"})";
const std::string rename = R"({"id":"s1","fileName":"n"})";

const std::vector<OperationRow> rows = {
    {"shareFolderCreate", "absent", absent, barePost},
    {"shareFolderCreate", "fresh", "{}", post("create", "{}")},
    {"shareFolderCreate", "full", create, post("create", create)},

    {"shareFolderRename", "absent", absent, barePost},
    {"shareFolderRename", "fresh", "{}", post("rename", "{}")},
    {"shareFolderRename", "full", rename, post("rename", rename)},

    {"shareFolderDelete", "absent", absent, barePost},
    {"shareFolderDelete", "fresh", "{}", post("delete", "{}")},
    {"shareFolderDelete", "full", R"({"id":"s1"})", post("delete", R"({"id":"s1"})")},

    {"shareFolderDetail", "absent", absent, bareGet},
    {"shareFolderDetail", "fresh", "{}", get("metadata/0")},
    {"shareFolderDetail", "full", R"({"shareFolderId":12})", get("metadata/12")},
    {"shareFolderDetail", "large", R"({"shareFolderId":9223372036854775807})",
     get("metadata/9223372036854775807")},
    {"shareFolderDetail", "negative", R"({"shareFolderId":-1})", get("metadata/-1")},

    {"shareFolderList", "absent", absent, bareGet},
    {"shareFolderList", "fresh", "{}", get("list?offset=0&limit=0")},
    {"shareFolderList", "full", R"({"offset":20,"limit":10,"keyWord":"k","status":"1","queryType":2})",
     get("list?offset=20&limit=10&keyWord=k&status=1&queryType=2")},
    {"shareFolderList", "emptyAndZero", R"({"keyWord":"","status":"","queryType":0})",
     get("list?offset=0&limit=0&keyWord=&status=&queryType=0")},
    {"shareFolderList", "onlyKeyWord", R"({"keyWord":"k"})", get("list?offset=0&limit=0&keyWord=k")},
    {"shareFolderList", "onlyStatus", R"({"status":"1"})", get("list?offset=0&limit=0&status=1")},
    {"shareFolderList", "onlyQueryType", R"({"queryType":2})", get("list?offset=0&limit=0&queryType=2")},
    {"shareFolderList", "valuesAsTheyAre", R"({"keyWord":"a%20b&c=d"})",
     get("list?offset=0&limit=0&keyWord=a%20b&c=d")},

    {"shareFolderAlbumList", "absent", absent, bareGet},
    {"shareFolderAlbumList", "fresh", "{}", get("album/list?offset=0&limit=0&shareFolderId=")},
    {"shareFolderAlbumList", "full", R"({"offset":20,"limit":10,"keyWord":"k","shareFolderId":"s1"})",
     get("album/list?offset=20&limit=10&shareFolderId=s1&keyWord=k")},
    {"shareFolderAlbumList", "empty", R"({"keyWord":"","shareFolderId":""})",
     get("album/list?offset=0&limit=0&shareFolderId=&keyWord=")},
    {"shareFolderAlbumList", "withoutKeyWord", R"({"shareFolderId":"s1"})",
     get("album/list?offset=0&limit=0&shareFolderId=s1")},
};

class ShareFolderOperation : public OperationTest {};

TEST_P(ShareFolderOperation, Sends) {
    expectRow(CloudInstance::shared().getShareFolderImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(IShareFolder, ShareFolderOperation, testing::ValuesIn(rows), nameOf);

TEST(IShareFolder, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<IShareFolder>(),
                testing::ElementsAre("shareFolderCreate", "shareFolderRename", "shareFolderDelete",
                                     "shareFolderDetail", "shareFolderList", "shareFolderAlbumList"));
}

TEST(IShareFolder, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getShareFolderImpl(), &CloudInstance::shared().getShareFolderImpl());
}

class ShareFolderAnswer : public ServiceTest {
  protected:
    IShareFolder& folders_ = CloudInstance::shared().getShareFolderImpl();
};

TEST_F(ShareFolderAnswer, HoldsTheNewFolderAndItsIds) {
    answer_ = R"({"id":"7","data":{"groupId":9007199254740993,"id":"7","shareFolderId":"7"},"code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(folders_, "shareFolderCreate", create).result), answer_);
}

TEST_F(ShareFolderAnswer, OfTheBareHostIsWhatTheServiceMakesOfIt) {
    status_ = 404;
    answer_ = R"({"code":404,"msg":"no such path"})";
    const auto failure = std::get<NetworkFailure>(callOperation(folders_, "shareFolderList", absent).result);
    EXPECT_EQ(failure.code, 404);
    EXPECT_EQ(failure.message, "no such path");
}

TEST_F(ShareFolderAnswer, NeverComesForARecordThatHasNoJsonForm) {
    const CreateShareFolderReq noText{.name = "\xff"};
    const auto outcome = awaitAnswer<CreateShareFolderResp>(
        [&](auto callback) { folders_.shareFolderCreate(noText, std::move(callback)); });
    EXPECT_EQ(std::get<NetworkFailure>(outcome.result).message, "params build faild");
    EXPECT_EQ(sent(), refused);
}

}  // namespace
}  // namespace baseapi::i_share_folder
