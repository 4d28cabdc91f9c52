#include "baseapi/api/album/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<CreateAlbumReq>();
template const RecordCodec& codecOf<CreateAlbumResp>();
template const RecordCodec& codecOf<UpdateAlbumReq>();
template const RecordCodec& codecOf<UpdateAlbumReqEx>();
template const RecordCodec& codecOf<DeleteAlbumReq>();
template const RecordCodec& codecOf<GetAlbumListReq>();
template const RecordCodec& codecOf<AlbumItem>();
template const RecordCodec& codecOf<ListAlbumsResp>();
template const RecordCodec& codecOf<AlbumContent>();
template const RecordCodec& codecOf<GetAlbumFileListReq>();
template const RecordCodec& codecOf<ListAlbumContentResp>();
template const RecordCodec& codecOf<FileMap>();
template const RecordCodec& codecOf<BatchAddContent2AlbumReq>();
template const RecordCodec& codecOf<BatchAddContent2AlbumReqEx>();
template const RecordCodec& codecOf<DeleteAlbumContentReq>();
template const RecordCodec& codecOf<DeleteAlbumContent>();

}  // namespace baseapi::inline v1
