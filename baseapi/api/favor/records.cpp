#include "baseapi/api/favor/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<GetStarFilesBean>();
template BASEAPI_API const RecordCodec& codecOf<StarFileInfo>();
template BASEAPI_API const RecordCodec& codecOf<GetStarFilesResponse>();
template BASEAPI_API const RecordCodec& codecOf<StarFileRequest>();
template BASEAPI_API const RecordCodec& codecOf<GetStarBatchBean>();
template BASEAPI_API const RecordCodec& codecOf<SubResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetStarBatchResponse>();
template BASEAPI_API const RecordCodec& codecOf<UpdateRevisionBean>();

}  // namespace baseapi::inline v1
