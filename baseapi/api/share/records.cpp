#include "baseapi/api/share/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<SharePermission>();
template BASEAPI_API const RecordCodec& codecOf<DeptInfo>();
template BASEAPI_API const RecordCodec& codecOf<GroupInfo>();
template BASEAPI_API const RecordCodec& codecOf<BaseUserInfo>();
template BASEAPI_API const RecordCodec& codecOf<BaseShareFile>();
template BASEAPI_API const RecordCodec& codecOf<ShareFile>();
template BASEAPI_API const RecordCodec& codecOf<ShareFileInfo>();
template BASEAPI_API const RecordCodec& codecOf<BaseShareLink>();
template BASEAPI_API const RecordCodec& codecOf<ShareLink>();
template BASEAPI_API const RecordCodec& codecOf<ShareLinkModify>();
template BASEAPI_API const RecordCodec& codecOf<ShareByMeLink>();
template BASEAPI_API const RecordCodec& codecOf<ShareByMeLinkDetail>();
template BASEAPI_API const RecordCodec& codecOf<ShareWithMeLink>();
template BASEAPI_API const RecordCodec& codecOf<ShareWithMeLinkDetail>();
template BASEAPI_API const RecordCodec& codecOf<CommonShareLink>();
template BASEAPI_API const RecordCodec& codecOf<GetShareBean>();
template BASEAPI_API const RecordCodec& codecOf<GetShareResponse>();
template BASEAPI_API const RecordCodec& codecOf<CreateShareBean>();
template BASEAPI_API const RecordCodec& codecOf<CreateShareResponse>();
template BASEAPI_API const RecordCodec& codecOf<CancelShareBean>();
template BASEAPI_API const RecordCodec& codecOf<ShareSubResponse>();
template BASEAPI_API const RecordCodec& codecOf<CancelShareResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetShareDetailBean>();
template BASEAPI_API const RecordCodec& codecOf<GetShareDetailResponse>();
template BASEAPI_API const RecordCodec& codecOf<ModifyShareDetailBean>();
template BASEAPI_API const RecordCodec& codecOf<ModifyShareDetailResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetShareFilesBean>();
template BASEAPI_API const RecordCodec& codecOf<GetShareFilesResponse>();

}  // namespace baseapi::inline v1
