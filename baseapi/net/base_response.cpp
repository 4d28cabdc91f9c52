#include "baseapi/net/base_response.h"

#include "baseapi/json/define_codec.h"

namespace baseapi {

template const RecordCodec& codecOf<BaseResponse>();

}  // namespace baseapi
