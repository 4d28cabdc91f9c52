#include "baseapi/api/share/records.h"

#include <gtest/gtest.h>

#include <concepts>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

TEST(ShareRecords, ThePartsOfALinkAreTheirWireTexts) {
    expectFullText<SharePermission>(R"({"preview":true,"edit":true,"download":true})");
    expectFullText<DeptInfo>(R"({"id":"a","name":"b"})");
    expectFullText<GroupInfo>(R"({"id":"a","name":"b"})");
    expectFullText<BaseUserInfo>(R"({"id":"a","name":"b"})");
    expectFullText<BaseShareFile>(
        R"({"id":"a","fileName":"b","fileType":"c","size":1,"parentFolder":["d","e"],)"
        R"("fileSuffix":"f","containers":["g","h"],"downloadLinks":[{"usage":"u"}]})");
    expectFullText<ShareFile>(R"({"editedTime":"a","id":"b","fileName":"c","fileType":"d","size":1,)"
                              R"("parentFolder":["e","f"],"fileSuffix":"g","containers":["h","i"],)"
                              R"("downloadLinks":[{"usage":"u"}]})");
    expectFullText<ShareFileInfo>(
        R"({"mimeType":"a","recycled":true,"id":"b","fileName":"c","fileType":"d","size":1,)"
        R"("parentFolder":["e","f"],"fileSuffix":"g","containers":["h","i"],)"
        R"("downloadLinks":[{"usage":"u"}]})");
}

TEST(ShareRecords, TheViewsOfALinkAreTheirWireTexts) {
    expectFullText<BaseShareLink>(
        R"({"shareId":"a","shortUrl":"b","linkUrl":"c","comment":"d","expireTime":"e"})");
    expectFullText<ShareLink>(
        R"({"extractCode":"a","shareId":"b","shortUrl":"c","linkUrl":"d","comment":"e",)"
        R"("expireTime":"f"})");
    expectFullText<ShareLinkModify>(
        R"({"extractCode":"a","createTime":"b","updateTime":"c","shareTime":"d","scope":1,)"
        R"("displayName":"e","status":2,"viewCnt":3,"downloadCnt":4,"saveCnt":5,"shareId":"f",)"
        R"("shortUrl":"g","linkUrl":"h","comment":"i","expireTime":"j"})");
    expectFullText<ShareByMeLink>(
        R"({"shareTime":"a","scope":1,"files":[{"mimeType":"x"}],"displayName":"b","status":2,)"
        R"("viewCnt":3,"downloadCnt":4,"saveCnt":5,"containerId":"c","containerName":"d",)"
        R"("shareId":"e","shortUrl":"f","linkUrl":"g","comment":"h","expireTime":"i"})");
    expectFullText<ShareByMeLinkDetail>(
        R"({"shareTime":"a","scope":1,"depts":[{"id":"x"}],"groups":[{"id":"x"}],)"
        R"("users":[{"id":"x"}],"displayName":"b",)"
        R"("permission":{"preview":true,"edit":false,"download":true},"extractCode":"c","status":2,)"
        R"("shareId":"d","shortUrl":"e","linkUrl":"f","comment":"g","expireTime":"h"})");
    expectFullText<ShareWithMeLink>(
        R"({"shareTime":"a","ownerId":"b","ownerName":"c","displayName":"d",)"
        R"("files":[{"mimeType":"x"}],"permission":{"preview":true,"edit":false,"download":true},)"
        R"("status":1,"containerId":"e","downloadCnt":2,"saveCnt":3,"scope":4,"updateTime":"f",)"
        R"("viewCnt":5,"shareId":"g","shortUrl":"h","linkUrl":"i","comment":"j","expireTime":"k"})");
    expectFullText<ShareWithMeLinkDetail>(
        R"({"shareTime":"a","ownerId":"b","ownerName":"c","displayName":"d",)"
        R"("permission":{"preview":true,"edit":false,"download":true},"status":1,"shareId":"e",)"
        R"("shortUrl":"f","linkUrl":"g","comment":"h","expireTime":"i"})");
    expectFullText<CommonShareLink>(
        R"({"shareId":"a","shortUrl":"b","shareTime":"c","ownerId":"d","ownerName":"e",)"
        R"("permission":"WRITE","expireTime":"f","status":1,"expireDate":"g"})");
}

TEST(ShareRecords, RequestsAndAnswersAreTheirWireTexts) {
    expectFullText<GetShareBean>(
        R"({"pageSize":1,"pageCursor":"a","sortType":2,"sortDirection":3,"displayName":"b",)"
        R"("imageProcess":"c"})");
    expectFullText<GetShareResponse>(
        R"({"nextCursor":"a","shareLinks":[{"shareTime":"x"}],"code":1,"msg":"b","httpCode":2})");
    expectFullText<CreateShareBean>(
        R"({"scope":1,"deptIds":["a","b"],"groupIds":["c","d"],"userIds":["e","f"],)"
        R"("fileIds":["g","h"],"containerId":"i",)"
        R"("permission":{"preview":true,"edit":false,"download":true},"extractCode":"j",)"
        R"("expireTime":"k","comment":"l","validDays":2,"expiredType":"m"})");
    expectFullText<CreateShareResponse>(
        R"({"shareLink":{"extractCode":"x"},"code":1,"msg":"a","httpCode":2})");
    expectFullText<CancelShareBean>(R"({"shareIds":["a","b"]})");
    expectFullText<ShareSubResponse>(R"({"shareId":"a","code":1,"msg":"b"})");
    expectFullText<CancelShareResponse>(
        R"({"subResponseList":[{"shareId":"x"}],"code":1,"msg":"a","httpCode":2})");
    expectFullText<GetShareDetailBean>(R"({"shareId":"a"})");
    expectFullText<GetShareDetailResponse>(
        R"({"shareLink":{"shareTime":"x"},"code":1,"msg":"a","httpCode":2})");
    expectFullText<ModifyShareDetailBean>(
        R"({"shareId":"a","deptIds":["b","c"],"groupIds":["d","e"],"userIds":["f","g"],)"
        R"("permission":{"preview":true,"edit":false,"download":true},"expireTime":"h",)"
        R"("extractCode":"i","comment":"j","validDays":1})");
    expectFullText<ModifyShareDetailResponse>(
        R"({"shareLink":{"extractCode":"x"},"code":1,"msg":"a","httpCode":2})");
    expectFullText<GetShareFilesBean>(
        R"({"shortUrl":"a","parentFolder":"b","pageSize":1,"pageCursor":"c","sortType":2,)"
        R"("sortDirection":3,"qbstoken":"d","refreshCount":true,"fileName":"e","imageProcess":"f"})");
    expectFullText<GetShareFilesResponse>(
        R"({"nextCursor":"a","files":[{"editedTime":"x"}],"link":{"shareId":"x"},"code":1,"msg":"b",)"
        R"("httpCode":2})");
}

TEST(ShareRecords, AListOfLinksIsAskedForWithAllItsFields) {
    static_assert(!std::default_initializable<GetShareBean>);
    const GetShareBean record(20, "c", 1, 2, "n", "i");
    EXPECT_EQ(
        encode(record),
        R"({"pageSize":20,"pageCursor":"c","sortType":1,"sortDirection":2,"displayName":"n","imageProcess":"i"})");
    expectFailure<GetShareBean>(R"({"sortType":1,"sortDirection":2})", Kind::keyNotFound, "");
}

TEST(ShareRecords, TheirDefaultsGoOut) {
    EXPECT_EQ(encode(CreateShareBean{}), R"({"scope":0})");
    EXPECT_EQ(encode(GetShareFilesBean{}), R"({"pageSize":100})");
    expectFailure<CreateShareBean>("{}", Kind::keyNotFound, "");
    expectFailure<GetShareFilesBean>(R"({"pageSize":null})", Kind::valueNotFound, "pageSize");
}

TEST(ShareRecords, AVisitorMayReadWriteOrRule) {
    using Permission = CommonShareLink::SharePermission;
    EXPECT_EQ(decoded<CommonShareLink>(R"({"permission":"READ"})").permission, Permission::read);
    EXPECT_EQ(decoded<CommonShareLink>(R"({"permission":"WRITE"})").permission, Permission::write);
    EXPECT_EQ(decoded<CommonShareLink>(R"({"permission":"ADMIN"})").permission, Permission::admin);
    EXPECT_EQ(decoded<CommonShareLink>(R"({"permission":null})").permission, std::nullopt);
    for (const auto* other : {"OWNER", "read", ""}) {
        const auto link = std::string(R"({"permission":")") + other + "\"}";
        expectFailure<CommonShareLink>(link, Kind::dataCorrupted, "permission");
        expectFailure<GetShareFilesResponse>("{\"link\":" + link + "}", Kind::dataCorrupted,
                                             "link.permission");
    }
    expectFailure<CommonShareLink>(R"({"permission":{"preview":true}})", Kind::typeMismatch, "permission");
}

TEST(ShareRecords, AWrongTypeAnywhereFailsTheAnswer) {
    expectFailure<GetShareResponse>(R"({"shareLinks":[{},{"files":[{"size":"12"}]}]})", Kind::typeMismatch,
                                    "shareLinks[1].files[0].size");
    expectFailure<GetShareDetailResponse>(R"({"shareLink":{"permission":{"edit":"true"}}})",
                                          Kind::typeMismatch, "shareLink.permission.edit");
    expectFailure<GetShareDetailResponse>(R"({"shareLink":{"users":[{"id":7}]}})", Kind::typeMismatch,
                                          "shareLink.users[0].id");
    expectFailure<CancelShareResponse>(R"({"subResponseList":[{"code":"0"}]})", Kind::typeMismatch,
                                       "subResponseList[0].code");
    expectFailure<CreateShareResponse>(R"({"shareLink":{"shareId":1}})", Kind::typeMismatch,
                                       "shareLink.shareId");
    expectFailure<ModifyShareDetailResponse>(R"({"shareLink":{"viewCnt":1.5}})", Kind::typeMismatch,
                                             "shareLink.viewCnt");
    expectFailure<GetShareFilesResponse>(R"({"files":[{"downloadLinks":[{"version":"1"}]}]})",
                                         Kind::typeMismatch, "files[0].downloadLinks[0].version");
}

}  // namespace
}  // namespace baseapi
