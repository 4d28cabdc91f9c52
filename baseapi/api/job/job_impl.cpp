#include "baseapi/api/job/job_impl.h"

#include <utility>

#include "baseapi/api/job/requests.h"

namespace baseapi::inline v1 {
namespace {

class JobImpl : public IJob {
    void cancelJobs(std::optional<CancelJobsBean> bean,
                    NetworkCallback<CancelJobsResponse> onCallback) override {
        start<CancelJobsRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void createJobs(std::optional<CreateJobBean> bean,
                    NetworkCallback<CreateJobsResponse> onCallback) override {
        start<CreateJobsRequest>(HTTPMethod::post, std::move(bean), std::move(onCallback));
    }
    void getJobDetailById(std::optional<GetJobDetailByIdBean> bean,
                          NetworkCallback<GetJobDetailByIdResponse> onCallback) override {
        start<GetJobDetailByIdRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
    void getJobs(std::optional<GetJobsBean> bean, NetworkCallback<GetJobsResponse> onCallback) override {
        start<GetJobsRequest>(HTTPMethod::get, std::move(bean), std::move(onCallback));
    }
};

}  // namespace

std::unique_ptr<IJob> makeJobImpl() {
    return std::make_unique<JobImpl>();
}

}  // namespace baseapi::inline v1
