#include "baseapi/api/records/archive_data.h"
#include "baseapi/api/records/asset.h"
#include "baseapi/api/records/attachment.h"
#include "baseapi/api/records/capabilities.h"
#include "baseapi/api/records/cipher.h"
#include "baseapi/api/records/download_link.h"
#include "baseapi/api/records/endpoint_url.h"
#include "baseapi/api/records/file.h"
#include "baseapi/api/records/file_bean.h"
#include "baseapi/api/records/file_id_info.h"
#include "baseapi/api/records/files_create.h"
#include "baseapi/api/records/filter.h"
#include "baseapi/api/records/images.h"
#include "baseapi/api/records/multi_part_info.h"
#include "baseapi/api/records/page_info.h"
#include "baseapi/api/records/properties.h"
#include "baseapi/api/records/resource.h"
#include "baseapi/api/records/slice_object.h"
#include "baseapi/api/records/sort_info.h"
#include "baseapi/api/records/user.h"
#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<User>();
template BASEAPI_API const RecordCodec& codecOf<UserBean>();
template BASEAPI_API const RecordCodec& codecOf<UserCapabilities>();
template BASEAPI_API const RecordCodec& codecOf<Capabilities>();
template BASEAPI_API const RecordCodec& codecOf<CapabilitiesEx>();
template BASEAPI_API const RecordCodec& codecOf<PrivateProperties>();
template BASEAPI_API const RecordCodec& codecOf<FileListPrivateProperties>();
template BASEAPI_API const RecordCodec& codecOf<Properties>();
template BASEAPI_API const RecordCodec& codecOf<EndpointURL>();
template BASEAPI_API const RecordCodec& codecOf<EndpointURLMetadata>();
template BASEAPI_API const RecordCodec& codecOf<Images>();
template BASEAPI_API const RecordCodec& codecOf<SliceObject>();
template BASEAPI_API const RecordCodec& codecOf<FileListSliceObject>();
template BASEAPI_API const RecordCodec& codecOf<SliceObjectMetadata>();
template BASEAPI_API const RecordCodec& codecOf<Resource>();
template BASEAPI_API const RecordCodec& codecOf<FileListResource>();
template BASEAPI_API const RecordCodec& codecOf<ResourceMetadata>();
template BASEAPI_API const RecordCodec& codecOf<Keychain>();
template BASEAPI_API const RecordCodec& codecOf<Cipher>();
template BASEAPI_API const RecordCodec& codecOf<Asset>();
template BASEAPI_API const RecordCodec& codecOf<FileListAsset>();
template BASEAPI_API const RecordCodec& codecOf<AssetMetadata>();
template BASEAPI_API const RecordCodec& codecOf<BaseAttachment>();
template BASEAPI_API const RecordCodec& codecOf<Attachment>();
template BASEAPI_API const RecordCodec& codecOf<FileListAttachment>();
template BASEAPI_API const RecordCodec& codecOf<AttachmentMetadata>();
template BASEAPI_API const RecordCodec& codecOf<DownloadLink>();
template BASEAPI_API const RecordCodec& codecOf<File>();
template BASEAPI_API const RecordCodec& codecOf<BaseFileBean>();
template BASEAPI_API const RecordCodec& codecOf<FileListMetadata>();
template BASEAPI_API const RecordCodec& codecOf<FileBean>();
template BASEAPI_API const RecordCodec& codecOf<MultiPartInfo>();
template BASEAPI_API const RecordCodec& codecOf<FilePartInfo>();
template BASEAPI_API const RecordCodec& codecOf<FilesCreateBean>();
template BASEAPI_API const RecordCodec& codecOf<FilesCreateResponse>();
template BASEAPI_API const RecordCodec& codecOf<PageInfo>();
template BASEAPI_API const RecordCodec& codecOf<FileSortInfo>();
template BASEAPI_API const RecordCodec& codecOf<SortInfo>();
template BASEAPI_API const RecordCodec& codecOf<Filter>();
template BASEAPI_API const RecordCodec& codecOf<FileIdInfo>();
template BASEAPI_API const RecordCodec& codecOf<UncompressedFileinfoList>();
template BASEAPI_API const RecordCodec& codecOf<ArchiveData>();

}  // namespace baseapi::inline v1
