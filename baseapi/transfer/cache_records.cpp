#include "baseapi/transfer/cache_records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<UploadCacheItemBean>();
template BASEAPI_API const RecordCodec& codecOf<UploadCacheBean>();
template BASEAPI_API const RecordCodec& codecOf<DownloadCacheItenBean>();
template BASEAPI_API const RecordCodec& codecOf<DownloadCacheBean>();

}  // namespace baseapi::inline v1
