#include "baseapi/api/sharefolder/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<CreateShareFolderReq>();
template BASEAPI_API const RecordCodec& codecOf<CreateShareFolderInfo>();
template BASEAPI_API const RecordCodec& codecOf<CreateShareFolderResp>();
template BASEAPI_API const RecordCodec& codecOf<RenameShareFolderReq>();
template BASEAPI_API const RecordCodec& codecOf<RenameShareFolderResp>();
template BASEAPI_API const RecordCodec& codecOf<DeleteShareFolderReq>();
template BASEAPI_API const RecordCodec& codecOf<GetShareFolderDetailReq>();
template BASEAPI_API const RecordCodec& codecOf<ShareFolder>();
template BASEAPI_API const RecordCodec& codecOf<ShareFolderMetadataResp>();
template BASEAPI_API const RecordCodec& codecOf<ListShareFolderReq>();
template BASEAPI_API const RecordCodec& codecOf<ShareFolderPageResp>();
template BASEAPI_API const RecordCodec& codecOf<GetShareFolderAlbumListReq>();
template BASEAPI_API const RecordCodec& codecOf<ShareFolderAlbum>();
template BASEAPI_API const RecordCodec& codecOf<ShareFolderAlbumPageResp>();

}  // namespace baseapi::inline v1
