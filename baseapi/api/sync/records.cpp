#include "baseapi/api/sync/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<CreateSyncDirReq>();
template const RecordCodec& codecOf<CreateSyncDirResp>();
template const RecordCodec& codecOf<CloseSyncDirReq>();
template const RecordCodec& codecOf<CloseSyncDirResp>();
template const RecordCodec& codecOf<GetStartCursorReq>();
template const RecordCodec& codecOf<GetStartCursorResp>();
template const RecordCodec& codecOf<ListChangeReq>();
template const RecordCodec& codecOf<FileChangeExtInfo>();
template const RecordCodec& codecOf<FileChangeInfo>();
template const RecordCodec& codecOf<ListChangeResp>();
template const RecordCodec& codecOf<WalkFileReq>();
template const RecordCodec& codecOf<WalkFileResp>();

}  // namespace baseapi::inline v1
