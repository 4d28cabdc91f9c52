#include "baseapi/api/backup/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<BaseDeviceBean>();
template BASEAPI_API const RecordCodec& codecOf<DeviceBean>();
template BASEAPI_API const RecordCodec& codecOf<DeviceResponse>();
template BASEAPI_API const RecordCodec& codecOf<DevicesResponse>();
template BASEAPI_API const RecordCodec& codecOf<CreateLockBean>();
template BASEAPI_API const RecordCodec& codecOf<LockIdBean>();
template BASEAPI_API const RecordCodec& codecOf<CreateBackupLockResponse>();
template BASEAPI_API const RecordCodec& codecOf<BaseRecordBean>();
template BASEAPI_API const RecordCodec& codecOf<CreateRecordBean>();
template BASEAPI_API const RecordCodec& codecOf<CompleteRecordBean>();
template BASEAPI_API const RecordCodec& codecOf<RecordDetailBean>();
template BASEAPI_API const RecordCodec& codecOf<RecordDetailResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetRecordBean>();
template BASEAPI_API const RecordCodec& codecOf<GetRecordsResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetRecordFilesBean>();
template BASEAPI_API const RecordCodec& codecOf<RecordFileDetailBean>();
template BASEAPI_API const RecordCodec& codecOf<GetRecordFilesResponse>();
template BASEAPI_API const RecordCodec& codecOf<RecordFileBean>();
template BASEAPI_API const RecordCodec& codecOf<PathPair>();
template BASEAPI_API const RecordCodec& codecOf<ScopeDetail>();
template BASEAPI_API const RecordCodec& codecOf<ScopeError>();
template BASEAPI_API const RecordCodec& codecOf<BaseScopeBean>();
template BASEAPI_API const RecordCodec& codecOf<AddScopeBean>();
template BASEAPI_API const RecordCodec& codecOf<DeleteScopeBean>();
template BASEAPI_API const RecordCodec& codecOf<DeleteErrorDetail>();
template BASEAPI_API const RecordCodec& codecOf<AddScopeResponse>();
template BASEAPI_API const RecordCodec& codecOf<DeleteScopeResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetScopeResponse>();
template BASEAPI_API const RecordCodec& codecOf<BaseConfigInfo>();
template BASEAPI_API const RecordCodec& codecOf<ConfigInfo>();
template BASEAPI_API const RecordCodec& codecOf<BaseConfigInfoBean>();
template BASEAPI_API const RecordCodec& codecOf<ListConfigInfoBean>();
template BASEAPI_API const RecordCodec& codecOf<GetConfigInfoBean>();
template BASEAPI_API const RecordCodec& codecOf<AddConfigInfoBean>();
template BASEAPI_API const RecordCodec& codecOf<UpdateConfigInfoBean>();
template BASEAPI_API const RecordCodec& codecOf<ConfigInfosResponse>();
template BASEAPI_API const RecordCodec& codecOf<AddConfigInfosResponse>();
template BASEAPI_API const RecordCodec& codecOf<UpdateConfigInfosResponse>();

}  // namespace baseapi::inline v1
