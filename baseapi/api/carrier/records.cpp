#include "baseapi/api/carrier/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<DrivePackageInfo>();
template const RecordCodec& codecOf<GetstandPackagesResponse>();
template const RecordCodec& codecOf<OrderedPackageInfo>();
template const RecordCodec& codecOf<GetStandPackagesOrdersResponse>();
template const RecordCodec& codecOf<OrderInfo>();
template const RecordCodec& codecOf<PackageChangeReq>();
template const RecordCodec& codecOf<PackageChangeBaseInfo>();
template const RecordCodec& codecOf<PackageChangeInfo>();
template const RecordCodec& codecOf<ReverseOperationAllPropertiesInfo>();
template const RecordCodec& codecOf<ReverseBatchOperationReq>();
template const RecordCodec& codecOf<OperationResultInfo>();
template const RecordCodec& codecOf<BatchOperationInfo>();
template const RecordCodec& codecOf<BatchOperationResultResp>();
template const RecordCodec& codecOf<NotifyPackageExpireReq>();

}  // namespace baseapi::inline v1
