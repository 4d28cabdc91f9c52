#include "baseapi/api/sync/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<CreateSyncDirReq>();
template BASEAPI_API const RecordCodec& codecOf<CreateSyncDirResp>();
template BASEAPI_API const RecordCodec& codecOf<CloseSyncDirReq>();
template BASEAPI_API const RecordCodec& codecOf<CloseSyncDirResp>();
template BASEAPI_API const RecordCodec& codecOf<GetStartCursorReq>();
template BASEAPI_API const RecordCodec& codecOf<GetStartCursorResp>();
template BASEAPI_API const RecordCodec& codecOf<ListChangeReq>();
template BASEAPI_API const RecordCodec& codecOf<FileChangeExtInfo>();
template BASEAPI_API const RecordCodec& codecOf<FileChangeInfo>();
template BASEAPI_API const RecordCodec& codecOf<ListChangeResp>();
template BASEAPI_API const RecordCodec& codecOf<WalkFileReq>();
template BASEAPI_API const RecordCodec& codecOf<WalkFileResp>();

}  // namespace baseapi::inline v1
