// The operations of favourites and revisions.

#include "tests/cli/call_rows.h"

namespace quillbox_test::call_favourites {
namespace {

using testing::HasSubstr;

const std::vector<Row> favouriteRows = {
    {"getStarFiles", "absent", absent, refused},
    {"getStarFiles", "fresh", "{}", success + R"("starFileList":[],"code":0)", "", get("star/files")},
    {"getStarFiles", "full",
     R"({"pageSize":1,"pageCursor":"","sortType":3,"sortDirection":1,"fileType":"45","imageProcess":"i"})",
     success + R"("starFileList":[],"code":0)", "",
     get("star/files?pageSize=1&sortType=3&sortDirection=1&imageProcess=i")},
    {"getStarFiles", "unknownCursor", R"({"pageCursor":"c"})", failure(13000400, "the page cursor"), "",
     get("star/files?pageCursor=c")},

    {"getStarBatch", "absent", absent, refused},
    {"getStarBatch", "fresh", "{}", success + R"("subResponseList":[],"status":0,)", "", post("star/batch")},
    {"getStarBatch", "full",
     R"({"starred":true,"subRequestList":[{"containerId":"CONTAINER","fileId":"FILE"},{"fileId":"none"}]})",
     success + R"("subResponseList":[{"fileId":"FILE","code":"0","message":"success"},)",
     R"({"fileId":"none","code":"13000404","message":"there is no file or folder \"none\""}],"status":1,)",
     post("star/batch")},

    {"updateRevision", "absent", absent, refused},
    {"updateRevision", "fresh", "{}", refused},
    {"updateRevision", "full",
     R"({"containerId":"CONTAINER","fileId":"FILE","revisionId":"","keepForever":true})", done, "",
     post("revision/updateRevision")},
    {"updateRevision", "withFileIdAlone", R"({"fileId":"FILE"})", done, "", post("revision/updateRevision")},
    {"updateRevision", "unknownRevision", R"({"fileId":"FILE","revisionId":"none"})",
     failure(13000404, "the file has no revision"), "", post("revision/updateRevision")},
    {"updateRevision", "ofAFolder", R"({"fileId":"FOLDER","keepForever":true})", failure(13000400, ""), "",
     post("revision/updateRevision")},
};

INSTANTIATE_TEST_SUITE_P(OfFavouritesAndRevisions, CallRow, testing::ValuesIn(favouriteRows), nameOf);

class CallFavouritesTest : public CallServiceTest {};

TEST_F(CallFavouritesTest, EveryOperationHasItsRows) {
    EXPECT_EQ(operationsIn(favouriteRows), operationsOf({"IFavor", "IRevision"}));
}

TEST_F(CallFavouritesTest, WhatWasStarredIsListedInPages) {
    call("getStarBatch", R"({"starred":true,"subRequestList":[{"fileId":"FILE"},{"fileId":"FOLDER"}]})");
    const auto first = call("getStarFiles", R"({"pageSize":1})").output;
    EXPECT_THAT(first, HasSubstr(filled(R"("starFileList":[{"id":"FOLDER","fileName":"known",)")));
    const auto rest =
        call("getStarFiles", R"({"pageSize":1,"pageCursor":")" + valueOf(first, "nextCursor") + "\"}").output;
    EXPECT_THAT(rest, HasSubstr(filled(R"("starFileList":[{"id":"FILE","fileName":"known.txt",)")));
    EXPECT_EQ(valueOf(rest, "nextCursor"), "");
}

}  // namespace
}  // namespace quillbox_test::call_favourites
