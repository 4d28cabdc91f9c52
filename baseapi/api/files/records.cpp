#include "baseapi/api/files/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<GetAccessFilesBean>();
template BASEAPI_API const RecordCodec& codecOf<AccessiFileInfo>();
template BASEAPI_API const RecordCodec& codecOf<RecentlyAccess>();
template BASEAPI_API const RecordCodec& codecOf<GetAccessResponse>();
template BASEAPI_API const RecordCodec& codecOf<SmartFolderAttr>();
template BASEAPI_API const RecordCodec& codecOf<CreateDirectoryBean>();
template BASEAPI_API const RecordCodec& codecOf<CreateDirectoryResponse>();
template BASEAPI_API const RecordCodec& codecOf<FilesCompleteBean>();
template BASEAPI_API const RecordCodec& codecOf<FilesRenameBean>();
template BASEAPI_API const RecordCodec& codecOf<FilesSearchBean>();
template BASEAPI_API const RecordCodec& codecOf<FileSearchResponse>();
template BASEAPI_API const RecordCodec& codecOf<FilesListBean>();
template BASEAPI_API const RecordCodec& codecOf<FilesListResponse>();
template BASEAPI_API const RecordCodec& codecOf<FilesPathBean>();
template BASEAPI_API const RecordCodec& codecOf<FilesPathResponse>();
template BASEAPI_API const RecordCodec& codecOf<FilesStatsDirBean>();
template BASEAPI_API const RecordCodec& codecOf<StatsData>();
template BASEAPI_API const RecordCodec& codecOf<FilesStatsDirResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetDownloadUrlBean>();
template BASEAPI_API const RecordCodec& codecOf<DownloadInfoResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetDownloadUrlResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetFileDetailBean>();
template BASEAPI_API const RecordCodec& codecOf<GetFileDetailResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetUploadUrlBean>();
template BASEAPI_API const RecordCodec& codecOf<GetUploadUrlResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetFilePreviewUrlBean>();
template BASEAPI_API const RecordCodec& codecOf<FileRreviewAndEditLinkResponse>();

}  // namespace baseapi::inline v1
