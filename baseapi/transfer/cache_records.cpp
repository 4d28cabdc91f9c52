#include "baseapi/transfer/cache_records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<UploadCacheItemBean>();
template const RecordCodec& codecOf<UploadCacheBean>();
template const RecordCodec& codecOf<DownloadCacheItenBean>();
template const RecordCodec& codecOf<DownloadCacheBean>();

}  // namespace baseapi::inline v1
