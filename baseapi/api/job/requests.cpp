#include "baseapi/api/job/requests.h"

#include "baseapi/net/query_text.h"

namespace baseapi::inline v1 {

int CancelJobsRequest::buildParams() {
    if (!bean || !bean->jobId) return refused;
    setAddress("/quillbox/ose/v1/cancel");  // without "jobs", as on the wire
    return setBody(*bean);
}

int CreateJobsRequest::buildParams() {
    if (!bean) return refused;
    setAddress("/quillbox/ose/v1/jobs");
    return setBody(*bean);
}

int GetJobDetailByIdRequest::buildParams() {
    if (!bean || !bean->jobId) return refused;
    setAddress("/quillbox/ose/v1/" + *bean->jobId);  // without "jobs", as on the wire
    return built;
}

int GetJobsRequest::buildParams() {
    if (!bean) return refused;
    constexpr std::int64_t any = -1;
    QueryText query;
    query.add("offset", bean->offset).add("limit", bean->limit);
    if (bean->type != any) query.add("type", bean->type);
    if (bean->status != any) query.add("status", bean->status);
    setAddress("/quillbox/ose/v1/jobs", query.text());
    return built;
}

}  // namespace baseapi::inline v1
