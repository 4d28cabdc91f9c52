#pragma once

#include <optional>

#include "baseapi/api/favor/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// The revisions of a file. Reached through `CloudInstance::shared().getRevisionImpl()`; callable from any
/// thread. Requests, callbacks and refusals are as `IFile` says.
class IRevision {
  public:
    virtual ~IRevision() = default;

    /// Says whether a revision of a file is kept for ever. `fileId` must be there.
    virtual void updateRevision(std::optional<UpdateRevisionBean> bean,
                                NetworkCallback<BaseResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(IRevision, updateRevision)
};

}  // namespace baseapi::inline v1
