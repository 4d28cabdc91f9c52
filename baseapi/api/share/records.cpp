#include "baseapi/api/share/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<SharePermission>();
template const RecordCodec& codecOf<DeptInfo>();
template const RecordCodec& codecOf<GroupInfo>();
template const RecordCodec& codecOf<BaseUserInfo>();
template const RecordCodec& codecOf<BaseShareFile>();
template const RecordCodec& codecOf<ShareFile>();
template const RecordCodec& codecOf<ShareFileInfo>();
template const RecordCodec& codecOf<BaseShareLink>();
template const RecordCodec& codecOf<ShareLink>();
template const RecordCodec& codecOf<ShareLinkModify>();
template const RecordCodec& codecOf<ShareByMeLink>();
template const RecordCodec& codecOf<ShareByMeLinkDetail>();
template const RecordCodec& codecOf<ShareWithMeLink>();
template const RecordCodec& codecOf<ShareWithMeLinkDetail>();
template const RecordCodec& codecOf<CommonShareLink>();
template const RecordCodec& codecOf<GetShareBean>();
template const RecordCodec& codecOf<GetShareResponse>();
template const RecordCodec& codecOf<CreateShareBean>();
template const RecordCodec& codecOf<CreateShareResponse>();
template const RecordCodec& codecOf<CancelShareBean>();
template const RecordCodec& codecOf<ShareSubResponse>();
template const RecordCodec& codecOf<CancelShareResponse>();
template const RecordCodec& codecOf<GetShareDetailBean>();
template const RecordCodec& codecOf<GetShareDetailResponse>();
template const RecordCodec& codecOf<ModifyShareDetailBean>();
template const RecordCodec& codecOf<ModifyShareDetailResponse>();
template const RecordCodec& codecOf<GetShareFilesBean>();
template const RecordCodec& codecOf<GetShareFilesResponse>();

}  // namespace baseapi::inline v1
