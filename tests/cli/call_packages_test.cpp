// The operations of the carrier's packages.

#include "tests/cli/call_rows.h"

namespace quillbox_test::call_packages {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::vector<Row> packageRows = {
    {"standardPackages", "full", absent, success + R"("data":[{"packageId":"1001","name":"Notebook")",
     R"("promotionPrice":"0.49")", get("carrier/standard/packages")},

    {"standardPackagesOrders", "full", absent, success + R"("data":[],"code":0)", "",
     get("carrier/standard/packages/orders")},

    {"operationBatch", "absent", absent, refused},
    {"operationBatch", "fresh", "{}", failure(13000400, R"(\"batchSN\" is missing or empty)"), "",
     post("carrier/operation/reverseOrder")},
    {"operationBatch", "full",
     R"({"batchSN":"b","operationList":[{"operationSN":"o","carrierUserId":"CONTAINER",)"
     R"("packageChangeList":[{"changeType":1,"packageId":"1001","packageType":1,"capacity":1,"count":1,)"
     R"("channel":1,"properties":{"k":"v"},"activateTime":"2026-01-02T03:04:05Z",)"
     R"("endTime":"2199-01-02T03:04:05Z","packageName":"n","basePackageId":"1001","status":"1","price":"1",)"
     R"("promotionPrice":"1","countryCode":"GB","currencyCode":"GBP"}]}],"assetClaerPolicy":0})",
     success + R"("data":[{"batchSN":"b","operationList":[{"qbUserId":")",
     R"("errorCode":"0","errorMsg":"success","status":0}]}],"code":0)",
     post("carrier/operation/reverseOrder")},
    {"operationBatch", "unknownPackage",
     R"({"batchSN":"b","operationList":[{"operationSN":"o","packageChangeList":)"
     R"([{"changeType":1,"packageId":"9"}]}]})",
     success + R"("data":[{"batchSN":"b")", R"("errorCode":"13000404")",
     post("carrier/operation/reverseOrder")},

    {"notifyPackageExpire", "absent", absent, refused},
    {"notifyPackageExpire", "fresh", "{}", failure(13000400, R"(\"packageId\" is missing)"), "",
     post("carrier/users/notifyPackageExpire")},
    {"notifyPackageExpire", "full", R"({"carrierUserId":"CONTAINER","type":1,"packageId":1001})",
     failure(13000404, "no order of the package 1001 is active"), "",
     post("carrier/users/notifyPackageExpire")},
};

INSTANTIATE_TEST_SUITE_P(OfPackages, CallRow, testing::ValuesIn(packageRows), nameOf);

using CallPackagesTest = CallServiceTest;

TEST_F(CallPackagesTest, EveryOperationHasItsRows) {
    EXPECT_EQ(operationsIn(packageRows), operationsOf({"ICarrier"}));
}

TEST_F(CallPackagesTest, AnOrderStandsInTheListAndRunsOut) {
    EXPECT_EQ(call("operationBatch", R"({"batchSN":"b","operationList":[{"operationSN":"o",)"
                                     R"("packageChangeList":[{"changeType":1,"packageId":"1002"}]}]})")
                  .status,
              0);
    EXPECT_THAT(call("standardPackagesOrders", absent).output,
                HasSubstr(R"("packageId":"1002","name":"Ledger")"));
    EXPECT_THAT(call("notifyPackageExpire", R"({"type":2,"packageId":1002})").lines, ElementsAre(done));
    EXPECT_THAT(call("standardPackagesOrders", absent).output, HasSubstr(R"("status":2)"));
}

}  // namespace
}  // namespace quillbox_test::call_packages
