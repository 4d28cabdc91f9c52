#include "baseapi/api/job/records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi::inline v1 {

template const RecordCodec& codecOf<FileInfo>();
template const RecordCodec& codecOf<CreateTaskInfoReq>();
template const RecordCodec& codecOf<CreateJobBean>();
template const RecordCodec& codecOf<CreateJobsResponse>();
template const RecordCodec& codecOf<CancelJobsBean>();
template const RecordCodec& codecOf<CancelJobsResponse>();
template const RecordCodec& codecOf<GetJobDetailByIdBean>();
template const RecordCodec& codecOf<JobDetailInfo>();
template const RecordCodec& codecOf<TaskInfo>();
template const RecordCodec& codecOf<UncompressedFileInfo>();
template const RecordCodec& codecOf<JobDetailData>();
template const RecordCodec& codecOf<GetJobDetailByIdResponse>();
template const RecordCodec& codecOf<GetJobsBean>();
template const RecordCodec& codecOf<JobInfo>();
template const RecordCodec& codecOf<GetJobsResponse>();
template const RecordCodec& codecOf<ShareJobInfo>();
template const RecordCodec& codecOf<ShareTaskInfo>();

}  // namespace baseapi::inline v1
