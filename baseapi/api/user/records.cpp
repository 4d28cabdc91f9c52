#include "baseapi/api/user/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<AuthCodeBean>();
template const RecordCodec& codecOf<OrgUserInfo>();
template const RecordCodec& codecOf<UserAuthResp>();
template const RecordCodec& codecOf<UserInfo>();
template const RecordCodec& codecOf<GetUserByIdBean>();
template const RecordCodec& codecOf<GetUsersByIdResponse>();
template const RecordCodec& codecOf<GetUserListBean>();
template const RecordCodec& codecOf<GetuserListResponse>();
template const RecordCodec& codecOf<ModifiedUserInfo>();
template const RecordCodec& codecOf<ModifyUserReq>();
template const RecordCodec& codecOf<DeleteUserByUserIdReq>();
template const RecordCodec& codecOf<GetSpaceBean>();
template const RecordCodec& codecOf<SpaceInfo>();
template const RecordCodec& codecOf<GetSpaceResp>();
template const RecordCodec& codecOf<GetCarrierSpaceReq>();
template const RecordCodec& codecOf<BatchGetSpaceReq>();
template const RecordCodec& codecOf<CarrierSpaceInfo>();
template const RecordCodec& codecOf<GetSpaceInfoResponse>();
template const RecordCodec& codecOf<BatchGetSpaceInfoResponse>();

}  // namespace baseapi::inline v1
