#include "baseapi/api/job/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template BASEAPI_API const RecordCodec& codecOf<FileInfo>();
template BASEAPI_API const RecordCodec& codecOf<CreateTaskInfoReq>();
template BASEAPI_API const RecordCodec& codecOf<CreateJobBean>();
template BASEAPI_API const RecordCodec& codecOf<CreateJobsResponse>();
template BASEAPI_API const RecordCodec& codecOf<CancelJobsBean>();
template BASEAPI_API const RecordCodec& codecOf<CancelJobsResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetJobDetailByIdBean>();
template BASEAPI_API const RecordCodec& codecOf<JobDetailInfo>();
template BASEAPI_API const RecordCodec& codecOf<TaskInfo>();
template BASEAPI_API const RecordCodec& codecOf<UncompressedFileInfo>();
template BASEAPI_API const RecordCodec& codecOf<JobDetailData>();
template BASEAPI_API const RecordCodec& codecOf<GetJobDetailByIdResponse>();
template BASEAPI_API const RecordCodec& codecOf<GetJobsBean>();
template BASEAPI_API const RecordCodec& codecOf<JobInfo>();
template BASEAPI_API const RecordCodec& codecOf<GetJobsResponse>();
template BASEAPI_API const RecordCodec& codecOf<ShareJobInfo>();
template BASEAPI_API const RecordCodec& codecOf<ShareTaskInfo>();

}  // namespace baseapi::inline v1
