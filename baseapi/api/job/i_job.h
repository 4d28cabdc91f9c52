#pragma once

#include <optional>

#include "baseapi/api/job/records.h"
#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// Jobs that the service runs over files, uncompressing among them: made with a list of files, then watched
/// or cancelled by their ids. Reached through `CloudInstance::shared().getJobImpl()`; callable from any
/// thread. Requests, callbacks and refusals are as `IFile` says.
class IJob {
  public:
    virtual ~IJob() = default;

    /// Cancels a job. `jobId` must be there.
    virtual void cancelJobs(std::optional<CancelJobsBean> bean,
                            NetworkCallback<CancelJobsResponse> onCallback) = 0;

    /// Makes a job; the answer comes before the job has ended.
    virtual void createJobs(std::optional<CreateJobBean> bean,
                            NetworkCallback<CreateJobsResponse> onCallback) = 0;

    /// How far a job has come, file by file. `jobId` must be there.
    virtual void getJobDetailById(std::optional<GetJobDetailByIdBean> bean,
                                  NetworkCallback<GetJobDetailByIdResponse> onCallback) = 0;

    /// The jobs of a type and a status, one stretch of the list a call.
    virtual void getJobs(std::optional<GetJobsBean> bean, NetworkCallback<GetJobsResponse> onCallback) = 0;

    BASEAPI_OPERATIONS(IJob, cancelJobs, createJobs, getJobDetailById, getJobs)
};

}  // namespace baseapi::inline v1
