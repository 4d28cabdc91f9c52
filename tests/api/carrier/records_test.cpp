#include "baseapi/api/carrier/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

TEST(CarrierRecords, PackagesAndOrdersAreTheirWireTexts) {
    expectFullText<DrivePackageInfo>(
        R"({"packageId":"a","name":"b","type":1,"capacity":2,"status":3,"price":"4.50",)"
        R"("promotionPrice":"3.99","countryCode":"c","currencyCode":"d"})");
    expectFullText<GetstandPackagesResponse>(
        R"({"data":[{"packageId":"x"}],"code":1,"msg":"a","httpCode":2})");
    expectFullText<OrderedPackageInfo>(
        R"({"activateTime":"a","endTime":"b","packageId":"c","name":"d","type":1,)"
        R"("capacity":9007199254740993,"status":3,"price":"4.50","countryCode":"e","currencyCode":"f"})");
    expectFullText<GetStandPackagesOrdersResponse>(
        R"({"data":[{"activateTime":"x"}],"code":1,"msg":"a","httpCode":2})");
    expectFullText<OrderInfo>(
        R"({"name":"a","type":1,"capacity":2,"status":3,"price":4.5,"promotionPrice":3.99,)"
        R"("countryCode":"b","currencyCode":"c","activateTime":"d","endTime":"e","packageId":"f"})");
    expectFullText<PackageChangeReq>(R"({"currentPackageId":"a","newPackageId":"b"})");
}

TEST(CarrierRecords, OperationsAreTheirWireTexts) {
    expectFullText<PackageChangeBaseInfo>(
        R"({"changeType":1,"packageId":"a","packageType":2,"capacity":3,"count":4,"channel":5,)"
        R"("properties":{"b":"c","d":"e"},"activateTime":"f","endTime":"g"})");
    expectFullText<PackageChangeInfo>(
        R"({"packageName":"a","basePackageId":"b","status":"c","price":"d","promotionPrice":"e",)"
        R"("countryCode":"f","currencyCode":"g","changeType":1,"packageId":"h","packageType":2,)"
        R"("capacity":3,"count":4,"channel":5,"properties":{},"activateTime":"i","endTime":"j"})");
    expectFullText<ReverseOperationAllPropertiesInfo>(
        R"({"operationSN":"a","carrierUserId":"b","packageChangeList":[{"packageName":"x"}]})");
    expectFullText<ReverseBatchOperationReq>(
        R"({"batchSN":"a","operationList":[{"operationSN":"x"}],"assetClaerPolicy":1})");
    expectFullText<OperationResultInfo>(R"({"qbUserId":"a","errorCode":"b","errorMsg":"c","status":1})");
    expectFullText<BatchOperationInfo>(R"({"batchSN":"a","operationList":[{"qbUserId":"x"}]})");
    expectFullText<BatchOperationResultResp>(R"({"data":[{"batchSN":"x"}],"code":1,"msg":"a","httpCode":2})");
    expectFullText<NotifyPackageExpireReq>(R"({"carrierUserId":"a","type":1,"packageId":2})");
}

TEST(CarrierRecords, OnlyAnOrderHasNumbersThatCannotBeAbsent) {
    EXPECT_EQ(encode(ReverseBatchOperationReq{}), "{}");
    EXPECT_EQ(encode(NotifyPackageExpireReq{}), "{}");
    EXPECT_EQ(encode(OrderInfo{}), R"({"type":0,"capacity":0,"status":0,"price":0,"promotionPrice":0})");
    expectFailure<OrderInfo>(R"({"type":0,"capacity":0,"status":0,"price":1})", Kind::keyNotFound, "");
    expectFailure<OrderInfo>(R"({"type":0,"capacity":0,"status":0,"price":null,"promotionPrice":0})",
                             Kind::valueNotFound, "price");
}

TEST(CarrierRecords, TellTheSameThingInDifferentTypes) {
    expectFailure<NotifyPackageExpireReq>(R"({"packageId":"p1"})", Kind::typeMismatch, "packageId");
    expectFailure<DrivePackageInfo>(R"({"packageId":1})", Kind::typeMismatch, "packageId");
    expectFailure<OrderedPackageInfo>(R"({"packageId":1})", Kind::typeMismatch, "packageId");
    expectFailure<OrderInfo>(R"({"price":"4.50"})", Kind::typeMismatch, "price");
    expectFailure<OrderedPackageInfo>(R"({"price":4.5})", Kind::typeMismatch, "price");
    expectFailure<PackageChangeInfo>(R"({"price":4.5})", Kind::typeMismatch, "price");
    expectFailure<PackageChangeInfo>(R"({"status":1})", Kind::typeMismatch, "status");
    expectFailure<DrivePackageInfo>(R"({"status":"1"})", Kind::typeMismatch, "status");
    EXPECT_EQ(decoded<ReverseBatchOperationReq>(R"({"assetClearPolicy":1})").assetClaerPolicy, std::nullopt);
}

TEST(CarrierRecords, AWrongTypeAnywhereFailsTheAnswer) {
    expectFailure<GetstandPackagesResponse>(R"({"data":[{"price":"4.50"},{"price":4.5}]})",
                                            Kind::typeMismatch, "data[1].price");
    expectFailure<GetstandPackagesResponse>(R"({"data":[{"promotionPrice":0}]})", Kind::typeMismatch,
                                            "data[0].promotionPrice");
    expectFailure<GetStandPackagesOrdersResponse>(R"({"data":[{"capacity":1.5}]})", Kind::typeMismatch,
                                                  "data[0].capacity");
    expectFailure<BatchOperationResultResp>(R"({"data":[{"operationList":[{},{"errorCode":404}]}]})",
                                            Kind::typeMismatch, "data[0].operationList[1].errorCode");
    expectFailure<BatchOperationResultResp>(R"({"data":{}})", Kind::typeMismatch, "data");
}

TEST(CarrierRecords, ThePropertiesOfAChangeAreTexts) {
    expectFailure<ReverseBatchOperationReq>(
        R"({"operationList":[{"packageChangeList":[{"properties":{"a":1}}]}]})", Kind::typeMismatch,
        "operationList[0].packageChangeList[0].properties.a");
}

}  // namespace
}  // namespace baseapi
