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

template const RecordCodec& codecOf<User>();
template const RecordCodec& codecOf<UserBean>();
template const RecordCodec& codecOf<UserCapabilities>();
template const RecordCodec& codecOf<Capabilities>();
template const RecordCodec& codecOf<CapabilitiesEx>();
template const RecordCodec& codecOf<PrivateProperties>();
template const RecordCodec& codecOf<FileListPrivateProperties>();
template const RecordCodec& codecOf<Properties>();
template const RecordCodec& codecOf<EndpointURL>();
template const RecordCodec& codecOf<EndpointURLMetadata>();
template const RecordCodec& codecOf<Images>();
template const RecordCodec& codecOf<SliceObject>();
template const RecordCodec& codecOf<FileListSliceObject>();
template const RecordCodec& codecOf<SliceObjectMetadata>();
template const RecordCodec& codecOf<Resource>();
template const RecordCodec& codecOf<FileListResource>();
template const RecordCodec& codecOf<ResourceMetadata>();
template const RecordCodec& codecOf<Keychain>();
template const RecordCodec& codecOf<Cipher>();
template const RecordCodec& codecOf<Asset>();
template const RecordCodec& codecOf<FileListAsset>();
template const RecordCodec& codecOf<AssetMetadata>();
template const RecordCodec& codecOf<BaseAttachment>();
template const RecordCodec& codecOf<Attachment>();
template const RecordCodec& codecOf<FileListAttachment>();
template const RecordCodec& codecOf<AttachmentMetadata>();
template const RecordCodec& codecOf<DownloadLink>();
template const RecordCodec& codecOf<File>();
template const RecordCodec& codecOf<BaseFileBean>();
template const RecordCodec& codecOf<FileListMetadata>();
template const RecordCodec& codecOf<FileBean>();
template const RecordCodec& codecOf<MultiPartInfo>();
template const RecordCodec& codecOf<FilePartInfo>();
template const RecordCodec& codecOf<FilesCreateBean>();
template const RecordCodec& codecOf<FilesCreateResponse>();
template const RecordCodec& codecOf<PageInfo>();
template const RecordCodec& codecOf<FileSortInfo>();
template const RecordCodec& codecOf<SortInfo>();
template const RecordCodec& codecOf<Filter>();
template const RecordCodec& codecOf<FileIdInfo>();
template const RecordCodec& codecOf<UncompressedFileinfoList>();
template const RecordCodec& codecOf<ArchiveData>();

}  // namespace baseapi::inline v1
