#include "baseapi/net/base_response.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<BaseResponse>();

}  // namespace baseapi::inline v1
