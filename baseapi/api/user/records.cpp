#include "baseapi/api/user/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi {

template const RecordCodec& codecOf<AuthCodeBean>();
template const RecordCodec& codecOf<OrgUserInfo>();
template const RecordCodec& codecOf<UserAuthResp>();

}  // namespace baseapi
