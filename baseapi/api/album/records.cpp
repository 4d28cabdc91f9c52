#include "baseapi/api/album/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<CreateAlbumReq>();
template BASEAPI_API const RecordCodec& codecOf<CreateAlbumResp>();
template BASEAPI_API const RecordCodec& codecOf<UpdateAlbumReq>();
template BASEAPI_API const RecordCodec& codecOf<UpdateAlbumReqEx>();
template BASEAPI_API const RecordCodec& codecOf<DeleteAlbumReq>();
template BASEAPI_API const RecordCodec& codecOf<GetAlbumListReq>();
template BASEAPI_API const RecordCodec& codecOf<AlbumItem>();
template BASEAPI_API const RecordCodec& codecOf<ListAlbumsResp>();
template BASEAPI_API const RecordCodec& codecOf<AlbumContent>();
template BASEAPI_API const RecordCodec& codecOf<GetAlbumFileListReq>();
template BASEAPI_API const RecordCodec& codecOf<ListAlbumContentResp>();
template BASEAPI_API const RecordCodec& codecOf<FileMap>();
template BASEAPI_API const RecordCodec& codecOf<BatchAddContent2AlbumReq>();
template BASEAPI_API const RecordCodec& codecOf<BatchAddContent2AlbumReqEx>();
template BASEAPI_API const RecordCodec& codecOf<DeleteAlbumContentReq>();
template BASEAPI_API const RecordCodec& codecOf<DeleteAlbumContent>();

}  // namespace baseapi::inline v1
