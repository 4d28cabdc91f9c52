// The operations of share links, called by the built quillbox at the built local service.

#include "tests/cli/call_rows.h"

namespace quillbox_test::call_shares {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// SHARE and SHORT stand for the id and the address of a link to FILE, whose extract code is "k3x9".
const std::vector<Row> shareRows = {
    {"getShares", "absent", absent, refused},
    {"getShares", "allZero", R"({"sortType":0,"sortDirection":0})",
     success + R"("shareLinks":[{"shareTime":")", R"("displayName":"known.txt","status":0,"viewCnt":0)",
     get("share")},
    {"getShares", "full",
     R"({"pageSize":10,"pageCursor":"","sortType":1,"sortDirection":2,"displayName":"KNOWN","imageProcess":"i"})",
     success + R"("shareLinks":[{)", R"("containerId":"CONTAINER")",
     get("share?pageSize=10&sortType=1&sortDirection=2&displayName=KNOWN&imageProcess=i")},
    {"getShares", "otherName", R"({"sortType":0,"sortDirection":0,"displayName":"none"})",
     success + R"("shareLinks":[],)", "", get("share?displayName=none")},
    {"getShares", "foreignCursor", R"({"sortType":0,"sortDirection":0,"pageCursor":"x"})",
     failure(13000400, "the page cursor"), "", get("share?pageCursor=x")},

    {"createShare", "absent", absent, refused},
    {"createShare", "fresh", "{}", failure(13000400, R"(\"fileIds\" is missing or empty)"), "",
     post("share")},
    {"createShare", "full",
     R"({"scope":0,"deptIds":[],"groupIds":[],"userIds":[],"fileIds":["FILE","FOLDER"],)"
     R"("containerId":"CONTAINER","permission":{"preview":true,"edit":false,"download":true},)"
     R"("extractCode":"abcd","expireTime":"2199-01-02T03:04:05Z","comment":"c","expiredType":"e"})",
     success + R"("shareLink":{"extractCode":"abcd","shareId":"2",)",
     R"("comment":"c","expireTime":"2199-01-02T03:04:05.000Z"})", post("share")},
    {"createShare", "forSomeDays", R"({"fileIds":["FILE"],"validDays":3})", success + R"("shareLink":{)",
     R"("expireTime":"20)", post("share")},
    {"createShare", "unknownFile", R"({"fileIds":["none"]})", failure(13000404, ""), "", post("share")},
    {"createShare", "unknownUser", R"({"fileIds":["FILE"],"scope":1,"userIds":["1"]})",
     failure(13000404, R"(there is no user \"1\")"), "", post("share")},

    {"cancelShare", "absent", absent, refused},
    {"cancelShare", "fresh", "{}", refused},
    {"cancelShare", "full", R"({"shareIds":["SHARE","999"]})",
     success + R"("subResponseList":[{"shareId":"SHARE","code":0,"msg":"success"},{"shareId":"999",)",
     R"("code":13000404)", post("share/cancel")},
    {"cancelShare", "none", R"({"shareIds":[]})", success + R"("subResponseList":[],)", "",
     post("share/cancel")},

    {"getShareDetail", "absent", absent, refused},
    {"getShareDetail", "fresh", "{}", refused},
    {"getShareDetail", "full", R"({"shareId":"SHARE"})", success + R"("shareLink":{"shareTime":")",
     R"("permission":{"preview":true,"edit":false,"download":true},"extractCode":"k3x9")",
     get("share/SHARE")},
    {"getShareDetail", "unknown", R"({"shareId":"999"})", failure(13000404, R"(there is no share \"999\")"),
     "", get("share/999")},
    {"getShareDetail", "emptyId", R"({"shareId":""})", failure(13000404, "there is no endpoint"), "",
     get("share/")},

    {"modifyShareDetail", "absent", absent, refused},
    {"modifyShareDetail", "fresh", "{}", refused},
    {"modifyShareDetail", "full",
     R"({"shareId":"SHARE","deptIds":[],"groupIds":[],"userIds":[],)"
     R"("permission":{"preview":true,"edit":true,"download":false},"expireTime":"",)"
     R"("extractCode":"new","comment":"d"})",
     success + R"("shareLink":{"extractCode":"new","createTime":")", R"("comment":"d")",
     "PUT /quillbox/ose/v1/share/SHARE"},
    {"modifyShareDetail", "forSomeDays", R"({"shareId":"SHARE","validDays":3})",
     success + R"("shareLink":{"extractCode":"k3x9")", R"("expireTime":"20)",
     "PUT /quillbox/ose/v1/share/SHARE"},
    {"modifyShareDetail", "unknown", R"({"shareId":"999"})", failure(13000404, ""), "",
     "PUT /quillbox/ose/v1/share/999"},

    {"getShareFiles", "absent", absent, refused},
    {"getShareFiles", "fresh", "{}", failure(13000400, R"(\"shortUrl\" is missing or empty)"), "",
     post("share/files")},
    {"getShareFiles", "full",
     R"({"shortUrl":"SHORT","parentFolder":"","pageSize":10,"pageCursor":"","sortType":1,"sortDirection":1,)"
     R"("qbstoken":"k3x9","refreshCount":true,"fileName":"known","imageProcess":"i"})",
     success + R"("files":[{"editedTime":")", R"("link":{"shareId":"SHARE","shortUrl":"SHORT",)",
     post("share/files")},
    {"getShareFiles", "unknown", R"({"shortUrl":"none"})", failure(13000404, R"(there is no link \"none\")"),
     "", post("share/files")},
};

class CallShareRow : public CallServiceTest, public testing::WithParamInterface<Row> {
  protected:
    CallShareRow() {
        const auto made = call("createShare", R"({"fileIds":["FILE"],"extractCode":"k3x9"})").output;
        know("SHARE", valueOf(made, "shareId"));
        know("SHORT", valueOf(made, "shortUrl"));
    }
};

TEST_P(CallShareRow, IsAnswered) {
    expectAnswer(GetParam());
}

INSTANTIATE_TEST_SUITE_P(OfTheShares, CallShareRow, testing::ValuesIn(shareRows), nameOf);

TEST_F(CallServiceTest, EveryOperationOfTheSharesHasItsRows) {
    EXPECT_EQ(operationsIn(shareRows), operationsOf({"IShare"}));
}

TEST_F(CallServiceTest, AListOfSharesWithoutAnOrderEndsTheProcess) {
    EXPECT_EQ(call("getShares", "{}").status, -1);
    EXPECT_EQ(call("getShares", R"({"sortType":1})").status, -1);
}

TEST_F(CallServiceTest, TheListOfSharesGoesOnWhereAPageEnded) {
    for (const auto* item : {"FILE", "FOLDER"})
        call("createShare", R"({"fileIds":[")" + std::string(item) + "\"]}");
    const auto namesInPages = [&](const std::string& order) {
        const auto page = [&](const std::string& cursor) {
            return call("getShares", R"({"pageSize":1,)" + order + R"(,"pageCursor":")" + cursor + "\"}")
                .output;
        };
        const auto first = page("");
        const auto rest = page(valueOf(first, "nextCursor"));
        return std::vector{valueOf(first, "displayName"), valueOf(rest, "displayName"),
                           valueOf(rest, "nextCursor")};
    };
    EXPECT_THAT(namesInPages(R"("sortType":0,"sortDirection":0)"), ElementsAre("known", "known.txt", ""));
    EXPECT_THAT(namesInPages(R"("sortType":1,"sortDirection":1)"), ElementsAre("known.txt", "known", ""));
}

TEST_F(CallServiceTest, AVisitorNeedsTheExtractCodeAndNoAccount) {
    const auto made = call("createShare", R"({"fileIds":["FILE"],"extractCode":"k3x9"})").output;
    const auto visit = [&](const std::string& more) {
        return run({"call", "getShareFiles",
                    R"({"shortUrl":")" + valueOf(made, "shortUrl") + "\"" + more + "}", "--json"},
                   settings())
            .output;
    };
    EXPECT_THAT(visit(""), HasSubstr("13000403"));
    EXPECT_THAT(visit(R"(,"qbstoken":"k3x9")"), HasSubstr(R"("permission":"READ")"));
}

}  // namespace
}  // namespace quillbox_test::call_shares
