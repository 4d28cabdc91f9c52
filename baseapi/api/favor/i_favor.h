#pragma once

#include <optional>

#include "baseapi/api/favor/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// The files that the user has starred. Reached through `CloudInstance::shared().getFavorImpl()`; callable
/// from any thread. Requests, callbacks and refusals are as `IFile` says.
class IFavor {
  public:
    virtual ~IFavor() = default;

    /// The starred files, one page a call.
    virtual void getStarFiles(std::optional<GetStarFilesBean> bean,
                              NetworkCallback<GetStarFilesResponse> onCallback) = 0;

    /// Stars files or takes their stars away, in spite of its name. An answer in which some failed is still
    /// a success; each entry says what became of its own.
    virtual void getStarBatch(std::optional<GetStarBatchBean> bean,
                              NetworkCallback<GetStarBatchResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(IFavor, getStarFiles, getStarBatch)
};

}  // namespace baseapi::inline v1
