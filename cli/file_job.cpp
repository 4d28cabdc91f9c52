#include "cli/file_job.h"

#include <array>
#include <chrono>
#include <utility>

#include "baseapi/api/files/i_file.h"
#include "baseapi/api/job/i_job.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/host.h"
#include "cli/job_display.h"

namespace quillbox {
namespace {

using baseapi::CloudInstance;
using baseapi::IJob;

constexpr auto pollInterval = std::chrono::milliseconds(200);

template <std::size_t Size>
std::string nameIn(const std::array<const char*, Size>& names, std::optional<std::int64_t> number) {
    if (!number) return "unknown";
    const auto known = *number >= 0 && *number < static_cast<std::int64_t>(Size);
    return known ? names[static_cast<std::size_t>(*number)] : std::to_string(*number);
}

/// As `Host::ask`, and goes on after a Ctrl-C: a job is to be cancelled then and what it has done to be told.
template <class Bean, class Response>
Response askThrough(Host& host, const std::string& what,
                    void (IJob::*operation)(std::optional<Bean>, baseapi::NetworkCallback<Response>),
                    Bean bean) {
    using Result = baseapi::NetworkResult<Response>;
    const auto answer = std::make_shared<std::optional<Result>>();
    host.refreshToken();
    (CloudInstance::shared().getJobImpl().*operation)(
        std::move(bean), [answer, &monitor = host.monitor()](Result result) {
            monitor.change([&] { answer->emplace(std::move(result)); });
        });
    if (!host.monitor().wait([&] { return answer->has_value(); })) throw Interrupted{};
    return (*answer)->visit([](const typename Result::success& it) { return it.record; },
                            [&](const typename Result::failure& it) -> Response {
                                throw ServiceFailure{what, it.code, it.message};
                            });
}

void show(Host& host, JobDisplay& display, const baseapi::JobDetailInfo& info) {
    const auto percent = info.progress.value_or(0);
    JsonLine event("progress");
    event.add("job", info.taskId).add("status", info.status).add("percent", percent);
    host.output().event(event);
    display.update(jobTypeText(info.taskType), percent * JobProgress::allShares / 100,
                   JobProgress::allShares);
}

baseapi::JobDetailData watch(Host& host, const std::string& id) {
    JobDisplay display(host.output(), JobProgress::allShares, JobProgress::Unit::shares);
    std::optional<std::int64_t> shown;
    while (true) {
        auto detail = askThrough(host, "the job " + id, &IJob::getJobDetailById,
                                 baseapi::GetJobDetailByIdBean{.jobId = id})
                          .data.value_or(baseapi::JobDetailData{});
        const auto info = detail.jobInfo.value_or(baseapi::JobDetailInfo{});
        if (info.progress != shown) show(host, display, info);
        shown = info.progress;
        if (info.endTime) return detail;
        host.monitor().sleepUntil(Monitor::Clock::now() + pollInterval);
    }
}

void tellItem(Output& output, const baseapi::TaskInfo& item) {
    const bool done = item.resultCode == "0" && item.status == "2";
    JsonLine event(done ? "success" : "failure");
    event.add("id", item.fileId).add("path", item.filePath);
    event.add("newId", item.newFileId).add("newPath", item.newFilePath);
    event.add("code", item.resultCode).add("message", item.resultDesc);
    auto text = item.filePath.value_or(item.fileId.value_or(""));
    if (done && item.newFilePath) text += "  " + *item.newFilePath;
    if (!done) text += "  " + item.resultDesc.value_or("not done");
    output.event(event, {text, done ? Line::Mark::good : Line::Mark::bad});
}

void tellRefused(Output& output, const baseapi::UncompressedFileInfo& entry) {
    if (!entry.reason) return;
    JsonLine event("refused");
    event.add("entry", entry.name).add("code", entry.code).add("message", entry.reason);
    output.event(event, {entry.name.value_or("") + "  " + *entry.reason, Line::Mark::bad});
}

bool tellEnd(Output& output, const baseapi::JobDetailData& detail) {
    if (detail.uncompressedFileList)
        for (const auto& entry : *detail.uncompressedFileList) tellRefused(output, entry);
    if (detail.taskInfos)
        for (const auto& item : *detail.taskInfos) tellItem(output, item);
    return detail.jobInfo && detail.jobInfo->taskResultCode == 0;
}

std::string pathOf(const Host& host, const std::string& folder) {
    baseapi::FilesPathBean bean;
    bean.fileId = folder;
    bean.containerId = CloudInstance::shared().contentId.get();
    return host
        .ask("the folder", CloudInstance::shared().getFileImpl(), &baseapi::IFile::filesPath,
             std::optional(std::move(bean)))
        .namePath.value_or("/");
}

}  // namespace

std::string jobTypeText(std::optional<std::int64_t> type) {
    return nameIn(std::array{"0", "copy", "move", "remove", "unzip"}, type);
}

std::string jobStatusText(std::optional<std::int64_t> status) {
    return nameIn(std::array{"waiting", "running", "done", "failed", "cancelled"}, status);
}

baseapi::CreateJobBean jobOver(const Host& host, JobType type, const std::vector<std::string>& ids,
                               const std::optional<std::string>& folder) {
    baseapi::CreateTaskInfoReq task;
    task.fileInfo.emplace();
    for (const auto& id : ids) task.fileInfo->push_back({.fileId = id});
    if (folder) task.newFilePath = pathOf(host, *folder);
    task.srcContainerId = CloudInstance::shared().contentId.get();
    return {.taskType = static_cast<std::int64_t>(type),
            .taskInfo = std::move(task),
            .dstContainerId = CloudInstance::shared().contentId.get()};
}

bool runJob(Host& host, const baseapi::CreateJobBean& bean) {
    host.interrupt().setWork({[] {}, [] { return std::string("the answer to the job"); }});
    const auto id = askThrough(host, "the job", &IJob::createJobs, bean).data.value_or("");
    if (id.empty()) throw ServiceFailure{"the job", -1, "the answer names no job"};
    host.interrupt().setWork({[id] {
                                  CloudInstance::shared().getJobImpl().cancelJobs(
                                      baseapi::CancelJobsBean{.jobId = id}, [](const auto&) {});
                              },
                              [id] { return "the end of job " + id; }});
    const bool done = tellEnd(host.output(), watch(host, id));
    if (host.interrupt().happened()) throw Interrupted{};
    return done;
}

}  // namespace quillbox
