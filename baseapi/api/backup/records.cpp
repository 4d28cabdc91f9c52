#include "baseapi/api/backup/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<BaseDeviceBean>();
template const RecordCodec& codecOf<DeviceBean>();
template const RecordCodec& codecOf<DeviceResponse>();
template const RecordCodec& codecOf<DevicesResponse>();
template const RecordCodec& codecOf<CreateLockBean>();
template const RecordCodec& codecOf<LockIdBean>();
template const RecordCodec& codecOf<CreateBackupLockResponse>();
template const RecordCodec& codecOf<BaseRecordBean>();
template const RecordCodec& codecOf<CreateRecordBean>();
template const RecordCodec& codecOf<CompleteRecordBean>();
template const RecordCodec& codecOf<RecordDetailBean>();
template const RecordCodec& codecOf<RecordDetailResponse>();
template const RecordCodec& codecOf<GetRecordBean>();
template const RecordCodec& codecOf<GetRecordsResponse>();
template const RecordCodec& codecOf<GetRecordFilesBean>();
template const RecordCodec& codecOf<RecordFileDetailBean>();
template const RecordCodec& codecOf<GetRecordFilesResponse>();
template const RecordCodec& codecOf<RecordFileBean>();
template const RecordCodec& codecOf<PathPair>();
template const RecordCodec& codecOf<ScopeDetail>();
template const RecordCodec& codecOf<ScopeError>();
template const RecordCodec& codecOf<BaseScopeBean>();
template const RecordCodec& codecOf<AddScopeBean>();
template const RecordCodec& codecOf<DeleteScopeBean>();
template const RecordCodec& codecOf<DeleteErrorDetail>();
template const RecordCodec& codecOf<AddScopeResponse>();
template const RecordCodec& codecOf<DeleteScopeResponse>();
template const RecordCodec& codecOf<GetScopeResponse>();
template const RecordCodec& codecOf<BaseConfigInfo>();
template const RecordCodec& codecOf<ConfigInfo>();
template const RecordCodec& codecOf<BaseConfigInfoBean>();
template const RecordCodec& codecOf<ListConfigInfoBean>();
template const RecordCodec& codecOf<GetConfigInfoBean>();
template const RecordCodec& codecOf<AddConfigInfoBean>();
template const RecordCodec& codecOf<UpdateConfigInfoBean>();
template const RecordCodec& codecOf<ConfigInfosResponse>();
template const RecordCodec& codecOf<AddConfigInfosResponse>();
template const RecordCodec& codecOf<UpdateConfigInfosResponse>();

}  // namespace baseapi::inline v1
