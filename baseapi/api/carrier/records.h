#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

// ---- packages and orders

/// A storage package that is for sale.
struct DrivePackageInfo {
    std::optional<std::string> packageId;
    std::optional<std::string> name;
    std::optional<std::int64_t> type;
    std::optional<std::int64_t> capacity;
    std::optional<std::int64_t> status;
    /// A text here, a number in `OrderInfo`; `promotionPrice` likewise.
    std::optional<std::string> price;
    std::optional<std::string> promotionPrice;
    std::optional<std::string> countryCode;
    std::optional<std::string> currencyCode;

    BASEAPI_FIELDS(DrivePackageInfo, packageId, name, type, capacity, status, price, promotionPrice,
                   countryCode, currencyCode)
};

/// What `standardPackages` answers.
struct GetstandPackagesResponse : BaseResponse {
    std::optional<std::vector<DrivePackageInfo>> data;

    BASEAPI_FIELDS_OF(GetstandPackagesResponse, BaseResponse, data)
};

/// A package that the user has ordered.
struct OrderedPackageInfo {
    std::optional<std::string> activateTime;
    std::optional<std::string> endTime;
    std::optional<std::string> packageId;
    std::optional<std::string> name;
    std::optional<std::int64_t> type;
    std::optional<std::int64_t> capacity;
    std::optional<std::int64_t> status;
    /// A text here, a number in `OrderInfo`.
    std::optional<std::string> price;
    std::optional<std::string> countryCode;
    std::optional<std::string> currencyCode;

    BASEAPI_FIELDS(OrderedPackageInfo, activateTime, endTime, packageId, name, type, capacity, status, price,
                   countryCode, currencyCode)
};

/// What `standardPackagesOrders` answers.
struct GetStandPackagesOrdersResponse : BaseResponse {
    std::optional<std::vector<OrderedPackageInfo>> data;

    BASEAPI_FIELDS_OF(GetStandPackagesOrdersResponse, BaseResponse, data)
};

/// An order. No operation answers it; it is there for the host's own use.
struct OrderInfo {
    std::optional<std::string> name;
    std::int64_t type = 0;
    std::int64_t capacity = 0;
    std::int64_t status = 0;
    /// A number here, a text in the packages; `promotionPrice` likewise.
    double price = 0;
    double promotionPrice = 0;
    std::optional<std::string> countryCode;
    std::optional<std::string> currencyCode;
    std::optional<std::string> activateTime;
    std::optional<std::string> endTime;
    std::optional<std::string> packageId;

    BASEAPI_FIELDS(OrderInfo, name, type, capacity, status, price, promotionPrice, countryCode, currencyCode,
                   activateTime, endTime, packageId)
};

/// A change from one package to another. No operation takes it; it is there for the host's own use.
struct PackageChangeReq {
    std::optional<std::string> currentPackageId;
    std::optional<std::string> newPackageId;

    BASEAPI_FIELDS(PackageChangeReq, currentPackageId, newPackageId)
};

// ---- operations to take back

/// What a change of a package is about.
struct PackageChangeBaseInfo {
    std::optional<std::int64_t> changeType;
    std::optional<std::string> packageId;
    std::optional<std::int64_t> packageType;
    std::optional<std::int64_t> capacity;
    std::optional<std::int64_t> count;
    std::optional<std::int64_t> channel;
    std::optional<std::map<std::string, std::string>> properties;
    std::optional<std::string> activateTime;
    std::optional<std::string> endTime;

    BASEAPI_FIELDS(PackageChangeBaseInfo, changeType, packageId, packageType, capacity, count, channel,
                   properties, activateTime, endTime)
};

/// A change of a package, with the package as it is sold.
struct PackageChangeInfo : PackageChangeBaseInfo {
    std::optional<std::string> packageName;
    std::optional<std::string> basePackageId;
    /// A text here, a number in the other records.
    std::optional<std::string> status;
    std::optional<std::string> price;
    std::optional<std::string> promotionPrice;
    std::optional<std::string> countryCode;
    std::optional<std::string> currencyCode;

    BASEAPI_FIELDS_OF(PackageChangeInfo, PackageChangeBaseInfo, packageName, basePackageId, status, price,
                      promotionPrice, countryCode, currencyCode)
};

/// One operation to take back.
struct ReverseOperationAllPropertiesInfo {
    std::optional<std::string> operationSN;
    /// The carrier's id of the user.
    std::optional<std::string> carrierUserId;
    std::optional<std::vector<PackageChangeInfo>> packageChangeList;

    BASEAPI_FIELDS(ReverseOperationAllPropertiesInfo, operationSN, carrierUserId, packageChangeList)
};

/// What `operationBatch` takes.
struct ReverseBatchOperationReq {
    std::optional<std::string> batchSN;
    std::optional<std::vector<ReverseOperationAllPropertiesInfo>> operationList;
    std::optional<std::int64_t> assetClaerPolicy;  // as on the wire

    BASEAPI_FIELDS(ReverseBatchOperationReq, batchSN, operationList, assetClaerPolicy)
};

/// What became of one operation.
struct OperationResultInfo {
    /// The service's id of the user.
    std::optional<std::string> qbUserId;
    std::optional<std::string> errorCode;
    std::optional<std::string> errorMsg;
    std::optional<std::int64_t> status;

    BASEAPI_FIELDS(OperationResultInfo, qbUserId, errorCode, errorMsg, status)
};

/// What became of one batch.
struct BatchOperationInfo {
    std::optional<std::string> batchSN;
    std::optional<std::vector<OperationResultInfo>> operationList;

    BASEAPI_FIELDS(BatchOperationInfo, batchSN, operationList)
};

/// What `operationBatch` answers.
struct BatchOperationResultResp : BaseResponse {
    std::optional<std::vector<BatchOperationInfo>> data;

    BASEAPI_FIELDS_OF(BatchOperationResultResp, BaseResponse, data)
};

/// What `notifyPackageExpire` takes.
struct NotifyPackageExpireReq {
    /// The carrier's id of the user.
    std::optional<std::string> carrierUserId;
    std::optional<std::int64_t> type;
    /// A number here, a text in every other record.
    std::optional<std::int64_t> packageId;

    BASEAPI_FIELDS(NotifyPackageExpireReq, carrierUserId, type, packageId)
};

}  // namespace baseapi::inline v1
