#include "baseapi/api/favor/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<GetStarFilesBean>();
template const RecordCodec& codecOf<StarFileInfo>();
template const RecordCodec& codecOf<GetStarFilesResponse>();
template const RecordCodec& codecOf<StarFileRequest>();
template const RecordCodec& codecOf<GetStarBatchBean>();
template const RecordCodec& codecOf<SubResponse>();
template const RecordCodec& codecOf<GetStarBatchResponse>();
template const RecordCodec& codecOf<UpdateRevisionBean>();

}  // namespace baseapi::inline v1
