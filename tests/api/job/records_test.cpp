#include "baseapi/api/job/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

using Kind = DecodingError::Kind;

TEST(JobRecords, OfMakingAndCancellingAreTheirWireTexts) {
    expectFullText<FileInfo>(R"({"fileId":"a","filePath":"b"})");
    expectFullText<CreateTaskInfoReq>(
        R"({"fileInfo":[{"fileId":"a"},{"filePath":"b"}],"newFilePath":"c","srcContainerId":"d",)"
        R"("uncompressFilePaths":["e","f"]})");
    expectFullText<CreateJobBean>(
        R"({"taskType":1,"actionType":2,"taskInfo":{"newFilePath":"a"},"dstContainerId":"b",)"
        R"("password":"c"})");
    expectFullText<CreateJobsResponse>(R"({"data":"a","code":1,"msg":"b","httpCode":2})");
    expectFullText<CancelJobsBean>(R"({"jobId":"a"})");
    expectFullText<CancelJobsResponse>(R"({"data":"a","code":1,"msg":"b","httpCode":2})");
}

TEST(JobRecords, OfWatchingAreTheirWireTexts) {
    expectFullText<GetJobDetailByIdBean>(R"({"jobId":"a"})");
    expectFullText<JobDetailInfo>(
        R"({"taskId":"a","taskName":"b","userId":"c","taskType":1,"actionType":2,"status":3,)"
        R"("taskResultCode":4,"resultCode":5,"progress":6,"downloadUrl":"d","contentNum":7,)"
        R"("containerId":"e","tenantId":"f","beginTime":"g","endTime":"h","createTime":"i"})");
    expectFullText<TaskInfo>(
        R"({"id":"a","fileId":"b","filePath":"c","status":"d","newFileId":"e","newFilePath":"f",)"
        R"("srcContainerId":"g","resultCode":"h","resultDesc":"i","tenantId":"j","createTime":"k"})");
    expectFullText<UncompressedFileInfo>(
        R"({"containerId":"a","fileId":"b","name":"c","fileSize":9007199254740993,"type":1,"updatedAt":2,)"
        R"("subFileList":{"name":"d","subFileList":{"name":"e"}},"reason":"f","code":"g",)"
        R"("reservationInfo":{"a":"s","b":1,"c":1.5,"d":true}})");
    expectFullText<JobDetailData>(R"({"jobInfo":{"taskId":"a"},"taskInfos":[{"id":"b"},{"id":"c"}],)"
                                  R"("uncompressedFileList":[{"name":"d"},{"name":"e"}]})");
    expectFullText<GetJobDetailByIdResponse>(
        R"({"data":{"jobInfo":{"taskId":"a"}},"code":1,"msg":"b","httpCode":2})");
}

TEST(JobRecords, OfListsAreTheirWireTexts) {
    expectFullText<GetJobsBean>(R"({"type":1,"status":2,"offset":3,"limit":4})");
    expectFullText<JobInfo>(
        R"({"taskId":"a","taskType":1,"actionType":2,"status":3,"taskResultCode":4,"resultCode":5,)"
        R"("contentNum":6,"containerId":"b","tenantId":"c","beginTime":"d","endTime":"e",)"
        R"("createTime":"f"})");
    expectFullText<GetJobsResponse>(
        R"({"data":[{"taskId":"a"},{"taskId":"b"}],"code":1,"msg":"c","httpCode":2})");
}

TEST(JobRecords, OfJobsOverSharedFilesAreTheirWireTexts) {
    expectFullText<ShareJobInfo>(
        R"({"userId":"a","taskId":"b","taskType":1,"taskStatus":2,"taskResultCode":3,"createTime":"c",)"
        R"("startTime":"d","endTime":"e","progress":4,"downloadUrl":"f"})");
    expectFullText<ShareTaskInfo>(R"({"fileId":"a","status":"b","newFileId":"c","srcContainerId":"d"})");
}

TEST(JobRecords, TheirDefaultsGoOut) {
    EXPECT_EQ(encode(CreateJobBean{}), R"({"taskType":0})");
    EXPECT_EQ(encode(GetJobsBean{}), R"({"type":-1,"status":-1,"offset":0,"limit":100})");
    expectFailure<CreateJobBean>("{}", Kind::keyNotFound, "");
    expectFailure<CreateJobBean>(R"({"taskType":null})", Kind::valueNotFound, "taskType");
    expectFailure<GetJobsBean>(R"({"type":1,"status":2,"offset":3})", Kind::keyNotFound, "");
    expectFailure<GetJobsBean>(R"({"type":1,"status":2,"offset":3,"limit":null})", Kind::valueNotFound,
                               "limit");
}

TEST(JobRecords, AReservationKeepsFlatValuesOnly) {
    const auto info = decoded<UncompressedFileInfo>(
        R"({"reservationInfo":{"a":"s","b":[1],"c":{"d":1},"e":null,"f":2,"g":1.5,"h":false}})");
    EXPECT_EQ(encode(info), R"({"reservationInfo":{"a":"s","f":2,"g":1.5,"h":false}})");
}

TEST(JobRecords, AReservationThatIsNoObjectIsAbsent) {
    for (const auto* other : {"[1]", "\"s\"", "1", "true", "null"}) {
        const auto info =
            decoded<UncompressedFileInfo>(std::string(R"({"name":"n","reservationInfo":)") + other + "}");
        EXPECT_EQ(info.reservationInfo, std::nullopt) << other;
        EXPECT_EQ(info.name, "n") << other;
    }
}

TEST(JobRecords, WhatIsInsideAnUncompressedFolderIsOneRecord) {
    expectFailure<UncompressedFileInfo>(R"({"subFileList":[{"name":"n"}]})", Kind::typeMismatch,
                                        "subFileList");
    EXPECT_FALSE(decoded<UncompressedFileInfo>(R"({"subFileList":null})").subFileList.has_value());
}

TEST(JobRecords, AWrongTypeAnywhereFailsTheAnswer) {
    expectFailure<CreateJobsResponse>(R"({"data":{"jobId":"j1"}})", Kind::typeMismatch, "data");
    expectFailure<CancelJobsResponse>(R"({"data":true})", Kind::typeMismatch, "data");
    expectFailure<GetJobDetailByIdResponse>(R"({"data":{"jobInfo":{"status":"2"}}})", Kind::typeMismatch,
                                            "data.jobInfo.status");
    expectFailure<GetJobDetailByIdResponse>(R"({"data":{"taskInfos":[{},{"resultCode":0}]}})",
                                            Kind::typeMismatch, "data.taskInfos[1].resultCode");
    expectFailure<GetJobDetailByIdResponse>(
        R"({"data":{"uncompressedFileList":[{"subFileList":{"subFileList":{"fileSize":"1"}}}]}})",
        Kind::typeMismatch, "data.uncompressedFileList[0].subFileList.subFileList.fileSize");
    expectFailure<GetJobsResponse>(R"({"data":[{"status":1},{"status":"1"}]})", Kind::typeMismatch,
                                   "data[1].status");
    expectFailure<GetJobsResponse>(R"({"data":{}})", Kind::typeMismatch, "data");
}

}  // namespace
}  // namespace baseapi
