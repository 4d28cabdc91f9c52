#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/job/i_job.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/file_job.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

constexpr std::int64_t jobsPerPage = 200;

void tell(Output& output, const baseapi::JobInfo& job) {
    JsonLine event("job");
    event.add("id", job.taskId).add("type", jobTypeText(job.taskType));
    event.add("status", jobStatusText(job.status)).add("items", job.contentNum);
    event.add("created", job.createTime).add("ended", job.endTime);
    output.event(event, {job.taskId.value_or("") + "  " + jobTypeText(job.taskType) + "  " +
                         jobStatusText(job.status) + "  " + job.createTime.value_or("")});
}

class JobList : public Command {
  public:
    std::string name() const override { return "jobs"; }
    std::string description() const override { return "List the jobs of the service, the latest first"; }
    void addOptions(Options&) override {}

    ExitStatus run(Host& host) override {
        baseapi::GetJobsBean bean{.limit = jobsPerPage};
        while (true) {
            const auto answer = host.ask("the jobs", baseapi::CloudInstance::shared().getJobImpl(),
                                         &baseapi::IJob::getJobs, std::optional(bean));
            const auto page = answer.data.value_or(std::vector<baseapi::JobInfo>{});
            for (const auto& job : page) tell(host.output(), job);
            if (page.size() < jobsPerPage || host.output().unread()) return ExitStatus::success;
            bean.offset += jobsPerPage;
        }
    }
};

}  // namespace

std::unique_ptr<Command> makeJobs() {
    return std::make_unique<JobList>();
}

}  // namespace quillbox
