#include "baseapi/transfer/sha256_result.h"

#include <utility>

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<PartInfo>();
template BASEAPI_API const RecordCodec& codecOf<Sha256Result>();

std::vector<MultiPartInfo> multiPartInfos(std::vector<PartInfo> parts) {
    std::vector<MultiPartInfo> infos;
    infos.reserve(parts.size());
    for (auto& part : parts) {
        infos.push_back({.partNumber = static_cast<std::int64_t>(infos.size()) + 1,
                         .partSize = part.partSize,
                         .partOffset = part.partOffset,
                         .hashCtx = std::move(part.hashCtx)});
    }
    return infos;
}

}  // namespace baseapi::inline v1
