#include "baseapi/api/favor/records.h"

#include <gtest/gtest.h>

#include <concepts>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

TEST(FavorRecords, OfListingAreTheirWireTexts) {
    expectFullText<GetStarFilesBean>(
        R"({"pageSize":1,"pageCursor":"a","sortType":2,"sortDirection":3,"fileType":"b",)"
        R"("imageProcess":"c"})");
    expectFullText<StarFileInfo>(
        R"({"category":"a","id":"b","fileName":"c","fileType":"d","mimeType":"e","favorite":true,)"
        R"("recycled":false,"parentFolder":["f","g"],"properties":{"h":"i"},"containers":["j","k"],)"
        R"("createdTime":"l","editedTime":"m","editedByMe":true,"owners":[{"userId":"n"}],)"
        R"("lastEditor":{"me":true},"fullFileSuffix":"o","fileSuffix":"p","size":1,"sha256":"q",)"
        R"("attachments":[{"assetId":"r"}],"downloadLinks":[{"usage":"s"}],)"
        R"("userProperties":{"attributes":{"t":[1,null]},"properties":{"u":"v"}},"starredTime":"w",)"
        R"("filePath":"x","spaceType":"y","invalid":2,"hidden":true,)"
        R"("userCapabilities":{"copyPermission":true}})");
    expectFullText<GetStarFilesResponse>(
        R"({"starFileList":[{"id":"a"},{"id":"b"}],"autoDeleted":1,"nextCursor":"c","code":2,"msg":"d",)"
        R"("httpCode":3})");
}

TEST(FavorRecords, OfStarringAreTheirWireTexts) {
    expectFullText<StarFileRequest>(R"({"containerId":"a","fileId":"b"})");
    expectFullText<GetStarBatchBean>(R"({"starred":true,"subRequestList":[{"containerId":"a"},{}]})");
    expectFullText<SubResponse>(R"({"fileId":"a","code":"b","message":"c"})");
    expectFullText<GetStarBatchResponse>(
        R"({"subResponseList":[{"fileId":"a"}],"status":1,"code":2,"msg":"b","httpCode":3})");
}

TEST(FavorRecords, OfRevisionsAreTheirWireTexts) {
    expectFullText<UpdateRevisionBean>(
        R"({"containerId":"a","fileId":"b","revisionId":"c","keepForever":true})");
    EXPECT_EQ(encode(UpdateRevisionBean{}), R"({"keepForever":false})");
    expectFailure<UpdateRevisionBean>(R"({"fileId":"b"})", Kind::keyNotFound, "");
    expectFailure<UpdateRevisionBean>(R"({"keepForever":null})", Kind::valueNotFound, "keepForever");
}

TEST(FavorRecords, ABatchIsMadeWithBothItsFields) {
    static_assert(!std::default_initializable<GetStarBatchBean>);
    EXPECT_EQ(encode(GetStarBatchBean(true, {StarFileRequest{"c", "f"}})),
              R"({"starred":true,"subRequestList":[{"containerId":"c","fileId":"f"}]})");
    EXPECT_EQ(encode(GetStarBatchBean(false, {})), R"({"starred":false,"subRequestList":[]})");
    expectFailure<GetStarBatchBean>(R"({"subRequestList":[]})", Kind::keyNotFound, "");
    expectFailure<GetStarBatchBean>(R"({"starred":true})", Kind::keyNotFound, "");
    expectFailure<GetStarBatchBean>(R"({"starred":true,"subRequestList":null})", Kind::valueNotFound,
                                    "subRequestList");
}

TEST(FavorRecords, ABatchEndsInOneOfFourWays) {
    const auto status = [](const std::string& number) {
        return decoded<GetStarBatchResponse>("{\"status\":" + number + "}").status;
    };
    EXPECT_EQ(status("0"), BatchStatus::allSuccess);
    EXPECT_EQ(status("1"), BatchStatus::partialSuccess);
    EXPECT_EQ(status("2"), BatchStatus::allFailed);
    for (const auto* other : {"3", "7", "-1", "-2", "4294967296", "9223372036854775807"})
        EXPECT_EQ(status(other), BatchStatus::unknown) << other;
}

TEST(FavorRecords, ABatchIsOfUnknownStatusUntilItIsRead) {
    EXPECT_EQ(GetStarBatchResponse{}.status, BatchStatus::unknown);
    EXPECT_EQ(encode(GetStarBatchResponse{}), R"({"status":-1})");
    EXPECT_EQ(encode(decoded<GetStarBatchResponse>(R"({"status":7})")), R"({"status":-1})");
}

TEST(FavorRecords, ABatchWithoutAStatusFails) {
    expectFailure<GetStarBatchResponse>(R"({"code":0})", Kind::keyNotFound, "");
    expectFailure<GetStarBatchResponse>(R"({"status":null})", Kind::valueNotFound, "status");
    expectFailure<GetStarBatchResponse>(R"({"status":"0"})", Kind::typeMismatch, "status");
    expectFailure<GetStarBatchResponse>(R"({"status":0.5})", Kind::typeMismatch, "status");
}

TEST(FavorRecords, AWrongTypeAnywhereFailsTheAnswer) {
    expectFailure<GetStarBatchResponse>(R"({"subResponseList":[{"code":0}],"status":0})", Kind::typeMismatch,
                                        "subResponseList[0].code");
    expectFailure<GetStarFilesResponse>(R"({"autoDeleted":"1"})", Kind::typeMismatch, "autoDeleted");
    expectFailure<GetStarFilesResponse>(R"({"starFileList":[{},{"properties":{"a":1}}]})", Kind::typeMismatch,
                                        "starFileList[1].properties.a");
    expectFailure<GetStarFilesResponse>(R"({"starFileList":[{"owners":[{"me":"true"}]}]})",
                                        Kind::typeMismatch, "starFileList[0].owners[0].me");
    expectFailure<GetStarFilesResponse>(R"({"starFileList":[{"attachments":[{"length":"1"}]}]})",
                                        Kind::typeMismatch, "starFileList[0].attachments[0].length");
    expectFailure<GetStarFilesResponse>(R"({"starFileList":[{"userCapabilities":{"editPermission":1}}]})",
                                        Kind::typeMismatch,
                                        "starFileList[0].userCapabilities.editPermission");
}

}  // namespace
}  // namespace baseapi
