#include "baseapi/api/carrier/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<DrivePackageInfo>();
template BASEAPI_API const RecordCodec& codecOf<GetstandPackagesResponse>();
template BASEAPI_API const RecordCodec& codecOf<OrderedPackageInfo>();
template BASEAPI_API const RecordCodec& codecOf<GetStandPackagesOrdersResponse>();
template BASEAPI_API const RecordCodec& codecOf<OrderInfo>();
template BASEAPI_API const RecordCodec& codecOf<PackageChangeReq>();
template BASEAPI_API const RecordCodec& codecOf<PackageChangeBaseInfo>();
template BASEAPI_API const RecordCodec& codecOf<PackageChangeInfo>();
template BASEAPI_API const RecordCodec& codecOf<ReverseOperationAllPropertiesInfo>();
template BASEAPI_API const RecordCodec& codecOf<ReverseBatchOperationReq>();
template BASEAPI_API const RecordCodec& codecOf<OperationResultInfo>();
template BASEAPI_API const RecordCodec& codecOf<BatchOperationInfo>();
template BASEAPI_API const RecordCodec& codecOf<BatchOperationResultResp>();
template BASEAPI_API const RecordCodec& codecOf<NotifyPackageExpireReq>();

}  // namespace baseapi::inline v1
