#include "baseapi/api/sharefolder/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<CreateShareFolderReq>();
template const RecordCodec& codecOf<CreateShareFolderInfo>();
template const RecordCodec& codecOf<CreateShareFolderResp>();
template const RecordCodec& codecOf<RenameShareFolderReq>();
template const RecordCodec& codecOf<RenameShareFolderResp>();
template const RecordCodec& codecOf<DeleteShareFolderReq>();
template const RecordCodec& codecOf<GetShareFolderDetailReq>();
template const RecordCodec& codecOf<ShareFolder>();
template const RecordCodec& codecOf<ShareFolderMetadataResp>();
template const RecordCodec& codecOf<ListShareFolderReq>();
template const RecordCodec& codecOf<ShareFolderPageResp>();
template const RecordCodec& codecOf<GetShareFolderAlbumListReq>();
template const RecordCodec& codecOf<ShareFolderAlbum>();
template const RecordCodec& codecOf<ShareFolderAlbumPageResp>();

}  // namespace baseapi::inline v1
