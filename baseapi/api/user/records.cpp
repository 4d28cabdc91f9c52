#include "baseapi/api/user/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<AuthCodeBean>();
template BASEAPI_API const RecordCodec& codecOf<OrgUserInfo>();
template BASEAPI_API const RecordCodec& codecOf<UserAuthResp>();
template BASEAPI_API const RecordCodec& codecOf<UserInfo>();
template BASEAPI_API const RecordCodec& codecOf<GetUserByIdBean>();
template BASEAPI_API const RecordCodec& codecOf<GetUsersByIdResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetUserListBean>();
template BASEAPI_API const RecordCodec& codecOf<GetuserListResponse>();
template BASEAPI_API const RecordCodec& codecOf<ModifiedUserInfo>();
template BASEAPI_API const RecordCodec& codecOf<ModifyUserReq>();
template BASEAPI_API const RecordCodec& codecOf<DeleteUserByUserIdReq>();
template BASEAPI_API const RecordCodec& codecOf<GetSpaceBean>();
template BASEAPI_API const RecordCodec& codecOf<SpaceInfo>();
template BASEAPI_API const RecordCodec& codecOf<GetSpaceResp>();
template BASEAPI_API const RecordCodec& codecOf<GetCarrierSpaceReq>();
template BASEAPI_API const RecordCodec& codecOf<BatchGetSpaceReq>();
template BASEAPI_API const RecordCodec& codecOf<CarrierSpaceInfo>();
template BASEAPI_API const RecordCodec& codecOf<GetSpaceInfoResponse>();
template BASEAPI_API const RecordCodec& codecOf<BatchGetSpaceInfoResponse>();

}  // namespace baseapi::inline v1
