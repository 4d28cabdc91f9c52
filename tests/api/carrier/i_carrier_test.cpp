#include "baseapi/api/carrier/i_carrier.h"

#include <gmock/gmock.h>

#include "tests/api/operation_table.h"

namespace baseapi::i_carrier {
namespace {

const std::string carrier = "/quillbox/ose/v1/carrier/";

Sent get(const std::string& target) {
    return {"GET", carrier + target, absent};
}
Sent post(const std::string& target, std::string body) {
    return {"POST", carrier + target, std::move(body)};
}

const std::string batch =
    R"({"batchSN":"b1","operationList":[{"operationSN":"o1","carrierUserId":"u1","packageChangeList":[)"
    R"({"packageName":"Grand é","basePackageId":"p0","status":"1","price":"4.50","promotionPrice":"3.99",)"
    R"("countryCode":"49","currencyCode":"EUR","changeType":1,"packageId":"p1","packageType":2,)"
    R"("capacity":1099511627776,"count":1,"channel":3,"properties":{"a":"b"},"activateTime":"t1",)"
    R"("endTime":"t2"}]}],"assetClaerPolicy":2})";
const std::string notice = R"({"carrierUserId":"u1","type":1,"packageId":7})";

const std::vector<OperationRow> rows = {
    {"standardPackages", "always", absent, get("standard/packages")},

    {"standardPackagesOrders", "always", absent, get("standard/packages/orders")},

    {"operationBatch", "absent", absent, refused},
    {"operationBatch", "fresh", "{}", post("operation/reverseOrder", "{}")},
    {"operationBatch", "full", batch, post("operation/reverseOrder", batch)},

    {"notifyPackageExpire", "absent", absent, refused},
    {"notifyPackageExpire", "fresh", "{}", post("users/notifyPackageExpire", "{}")},
    {"notifyPackageExpire", "full", notice, post("users/notifyPackageExpire", notice)},
};

class CarrierOperation : public OperationTest {};

TEST_P(CarrierOperation, SendsOrRefuses) {
    expectRow(CloudInstance::shared().getCarrierImpl(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(ICarrier, CarrierOperation, testing::ValuesIn(rows), nameOf);

TEST(ICarrier, NamesItsOperationsInTheirOrder) {
    EXPECT_THAT(operationNames<ICarrier>(), testing::ElementsAre("standardPackages", "standardPackagesOrders",
                                                                 "operationBatch", "notifyPackageExpire"));
}

TEST(ICarrier, IsOneObject) {
    EXPECT_EQ(&CloudInstance::shared().getCarrierImpl(), &CloudInstance::shared().getCarrierImpl());
}

class CarrierAnswer : public ServiceTest {
  protected:
    ICarrier& carrier_ = CloudInstance::shared().getCarrierImpl();
};

TEST_F(CarrierAnswer, HoldsThePackagesOnOffer) {
    answer_ = R"({"data":[{"packageId":"p1","capacity":1099511627776,"price":"4.50"},{}],"code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(carrier_, "standardPackages", absent).result), answer_);
}

TEST_F(CarrierAnswer, HoldsTheOrdersOfTheUser) {
    answer_ = R"({"data":[{"activateTime":"t1","packageId":"p1","price":"4.50"}],"code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(carrier_, "standardPackagesOrders", absent).result),
              answer_);
}

TEST_F(CarrierAnswer, OfABatchIsASuccessThoughAnOperationFailed) {
    answer_ = R"({"data":[{"batchSN":"b1","operationList":[{"qbUserId":"q1","status":0},)"
              R"({"qbUserId":"q2","errorCode":"404","errorMsg":"no such user","status":1}]}],"code":0})";
    EXPECT_EQ(std::get<std::string>(callOperation(carrier_, "operationBatch", batch).result), answer_);
}

TEST_F(CarrierAnswer, WithAPriceThatIsANumberIsAFailureThatNamesThePlace) {
    answer_ = R"({"data":[{"packageId":"p1","price":4.5}],"code":0})";
    const auto failure = std::get<NetworkFailure>(callOperation(carrier_, "standardPackages", absent).result);
    EXPECT_EQ(failure.code, -1);
    EXPECT_EQ(failure.message,
              "str to bean error type mismatch: string at data[0].price (found the number 4.5)");
}

TEST_F(CarrierAnswer, KeepsTheServicesCodeAndMessage) {
    status_ = 404;
    answer_ = R"({"code":13000404,"msg":"no such package"})";
    const auto failure =
        std::get<NetworkFailure>(callOperation(carrier_, "notifyPackageExpire", notice).result);
    EXPECT_EQ(failure.code, 13000404);
    EXPECT_EQ(failure.message, "no such package");
}

}  // namespace
}  // namespace baseapi::i_carrier
