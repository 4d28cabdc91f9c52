#pragma once

#include <optional>

#include "baseapi/api/user/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// The space of several owners at once. Reached through `CloudInstance::shared().getSpaceImpl()`; callable
/// from any thread. Requests and callbacks are as `IFile` says.
class ISpace {
  public:
    virtual ~ISpace() = default;

    /// The space of each owner asked for, in an entry of its own. An absent record is not refused: the
    /// request goes out with neither path nor body.
    virtual void batchGetSpace(std::optional<BatchGetSpaceReq> bean,
                               NetworkCallback<BatchGetSpaceInfoResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(ISpace, batchGetSpace)
};

}  // namespace baseapi::inline v1
