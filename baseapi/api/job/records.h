#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"
#include "baseapi/json/shared.h"
#include "baseapi/net/base_response.h"

namespace baseapi::inline v1 {

// ---- making and cancelling

/// A file that a job is about.
struct FileInfo {
    std::optional<std::string> fileId;
    std::optional<std::string> filePath;

    BASEAPI_FIELDS(FileInfo, fileId, filePath)
};

/// The files of a new job, and where they go.
struct CreateTaskInfoReq {
    std::optional<std::vector<FileInfo>> fileInfo;
    std::optional<std::string> newFilePath;
    std::optional<std::string> srcContainerId;
    /// The paths inside an archive that are wanted.
    std::optional<std::vector<std::string>> uncompressFilePaths;

    BASEAPI_FIELDS(CreateTaskInfoReq, fileInfo, newFilePath, srcContainerId, uncompressFilePaths)
};

/// What `createJobs` takes.
struct CreateJobBean {
    std::int64_t taskType = 0;
    std::optional<std::int64_t> actionType;
    std::optional<CreateTaskInfoReq> taskInfo;
    std::optional<std::string> dstContainerId;
    /// Of an archive; sent as it is.
    std::optional<std::string> password;

    BASEAPI_FIELDS(CreateJobBean, taskType, actionType, taskInfo, dstContainerId, password)
};

/// What `createJobs` answers.
struct CreateJobsResponse : BaseResponse {
    std::optional<std::string> data;

    BASEAPI_FIELDS_OF(CreateJobsResponse, BaseResponse, data)
};

/// What `cancelJobs` takes.
struct CancelJobsBean {
    /// It must be there.
    std::optional<std::string> jobId;

    BASEAPI_FIELDS(CancelJobsBean, jobId)
};

/// What `cancelJobs` answers.
struct CancelJobsResponse : BaseResponse {
    std::optional<std::string> data;

    BASEAPI_FIELDS_OF(CancelJobsResponse, BaseResponse, data)
};

// ---- watching one job

/// What `getJobDetailById` takes.
struct GetJobDetailByIdBean {
    /// It goes into the path.
    std::optional<std::string> jobId;

    BASEAPI_FIELDS(GetJobDetailByIdBean, jobId)
};

/// A job as a whole.
struct JobDetailInfo {
    std::optional<std::string> taskId;
    std::optional<std::string> taskName;
    std::optional<std::string> userId;
    std::optional<std::int64_t> taskType;
    std::optional<std::int64_t> actionType;
    std::optional<std::int64_t> status;
    std::optional<std::int64_t> taskResultCode;
    std::optional<std::int64_t> resultCode;
    std::optional<std::int64_t> progress;
    std::optional<std::string> downloadUrl;
    std::optional<std::int64_t> contentNum;
    std::optional<std::string> containerId;
    std::optional<std::string> tenantId;
    std::optional<std::string> beginTime;
    std::optional<std::string> endTime;
    std::optional<std::string> createTime;

    BASEAPI_FIELDS(JobDetailInfo, taskId, taskName, userId, taskType, actionType, status, taskResultCode,
                   resultCode, progress, downloadUrl, contentNum, containerId, tenantId, beginTime, endTime,
                   createTime)
};

/// What a job does with one of its files. `status` and `resultCode` are texts here and numbers in `JobInfo`.
struct TaskInfo {
    std::optional<std::string> id;
    std::optional<std::string> fileId;
    std::optional<std::string> filePath;
    std::optional<std::string> status;
    std::optional<std::string> newFileId;
    std::optional<std::string> newFilePath;
    std::optional<std::string> srcContainerId;
    std::optional<std::string> resultCode;
    std::optional<std::string> resultDesc;
    std::optional<std::string> tenantId;
    std::optional<std::string> createTime;

    BASEAPI_FIELDS(TaskInfo, id, fileId, filePath, status, newFileId, newFilePath, srcContainerId, resultCode,
                   resultDesc, tenantId, createTime)
};

/// What came out of an archive.
struct UncompressedFileInfo {
    std::optional<std::string> containerId;
    std::optional<std::string> fileId;
    std::optional<std::string> name;
    /// In bytes.
    std::optional<std::int64_t> fileSize;
    std::optional<std::int64_t> type;
    std::optional<std::int64_t> updatedAt;
    /// One record, in spite of its name. Copies of this record share it.
    Shared<UncompressedFileInfo> subFileList;
    std::optional<std::string> reason;
    std::optional<std::string> code;
    std::optional<FlatMap> reservationInfo;

    BASEAPI_FIELDS(UncompressedFileInfo, containerId, fileId, name, fileSize, type, updatedAt, subFileList,
                   reason, code, reservationInfo)
};

/// A job, what it does with each file, and what came out of an archive.
struct JobDetailData {
    std::optional<JobDetailInfo> jobInfo;
    std::optional<std::vector<TaskInfo>> taskInfos;
    std::optional<std::vector<UncompressedFileInfo>> uncompressedFileList;

    BASEAPI_FIELDS(JobDetailData, jobInfo, taskInfos, uncompressedFileList)
};

/// What `getJobDetailById` answers.
struct GetJobDetailByIdResponse : BaseResponse {
    std::optional<JobDetailData> data;

    BASEAPI_FIELDS_OF(GetJobDetailByIdResponse, BaseResponse, data)
};

// ---- lists of jobs

/// What `getJobs` takes.
struct GetJobsBean {
    /// -1 is not sent.
    std::int64_t type = -1;
    /// -1 is not sent.
    std::int64_t status = -1;
    /// How many are passed over.
    std::int64_t offset = 0;
    /// How many at most.
    std::int64_t limit = 100;

    BASEAPI_FIELDS(GetJobsBean, type, status, offset, limit)
};

/// A job in a list.
struct JobInfo {
    std::optional<std::string> taskId;
    std::optional<std::int64_t> taskType;
    std::optional<std::int64_t> actionType;
    std::optional<std::int64_t> status;
    std::optional<std::int64_t> taskResultCode;
    std::optional<std::int64_t> resultCode;
    std::optional<std::int64_t> contentNum;
    std::optional<std::string> containerId;
    std::optional<std::string> tenantId;
    std::optional<std::string> beginTime;
    std::optional<std::string> endTime;
    std::optional<std::string> createTime;

    BASEAPI_FIELDS(JobInfo, taskId, taskType, actionType, status, taskResultCode, resultCode, contentNum,
                   containerId, tenantId, beginTime, endTime, createTime)
};

/// What `getJobs` answers.
struct GetJobsResponse : BaseResponse {
    std::optional<std::vector<JobInfo>> data;

    BASEAPI_FIELDS_OF(GetJobsResponse, BaseResponse, data)
};

// ---- jobs over shared files

/// A job over shared files. No operation answers it; it is there for the host's own use.
struct ShareJobInfo {
    std::optional<std::string> userId;
    std::optional<std::string> taskId;
    std::optional<std::int64_t> taskType;
    std::optional<std::int64_t> taskStatus;
    std::optional<std::int64_t> taskResultCode;
    std::optional<std::string> createTime;
    std::optional<std::string> startTime;
    std::optional<std::string> endTime;
    std::optional<std::int64_t> progress;
    std::optional<std::string> downloadUrl;

    BASEAPI_FIELDS(ShareJobInfo, userId, taskId, taskType, taskStatus, taskResultCode, createTime, startTime,
                   endTime, progress, downloadUrl)
};

/// What a job does with one of the shared files. No operation answers it; it is there for the host's own use.
struct ShareTaskInfo {
    std::optional<std::string> fileId;
    std::optional<std::string> status;
    std::optional<std::string> newFileId;
    std::optional<std::string> srcContainerId;

    BASEAPI_FIELDS(ShareTaskInfo, fileId, status, newFileId, srcContainerId)
};

}  // namespace baseapi::inline v1
