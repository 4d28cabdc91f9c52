#include "baseapi/api/files/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<GetAccessFilesBean>();
template const RecordCodec& codecOf<AccessiFileInfo>();
template const RecordCodec& codecOf<RecentlyAccess>();
template const RecordCodec& codecOf<GetAccessResponse>();
template const RecordCodec& codecOf<SmartFolderAttr>();
template const RecordCodec& codecOf<CreateDirectoryBean>();
template const RecordCodec& codecOf<CreateDirectoryResponse>();
template const RecordCodec& codecOf<FilesCompleteBean>();
template const RecordCodec& codecOf<FilesRenameBean>();
template const RecordCodec& codecOf<FilesSearchBean>();
template const RecordCodec& codecOf<FileSearchResponse>();
template const RecordCodec& codecOf<FilesListBean>();
template const RecordCodec& codecOf<FilesListResponse>();
template const RecordCodec& codecOf<FilesPathBean>();
template const RecordCodec& codecOf<FilesPathResponse>();
template const RecordCodec& codecOf<FilesStatsDirBean>();
template const RecordCodec& codecOf<StatsData>();
template const RecordCodec& codecOf<FilesStatsDirResponse>();
template const RecordCodec& codecOf<GetDownloadUrlBean>();
template const RecordCodec& codecOf<DownloadInfoResponse>();
template const RecordCodec& codecOf<GetDownloadUrlResponse>();
template const RecordCodec& codecOf<GetFileDetailBean>();
template const RecordCodec& codecOf<GetFileDetailResponse>();
template const RecordCodec& codecOf<GetUploadUrlBean>();
template const RecordCodec& codecOf<GetUploadUrlResponse>();
template const RecordCodec& codecOf<GetFilePreviewUrlBean>();
template const RecordCodec& codecOf<FileRreviewAndEditLinkResponse>();

}  // namespace baseapi::inline v1
