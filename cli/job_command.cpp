#include "cli/job_command.h"

#include <optional>
#include <utility>
#include <vector>

#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class JobCommand : public Command {
  public:
    JobCommand(std::string name, std::string description, JobType type)
        : name_(std::move(name)), description_(std::move(description)), type_(type) {}

    std::string name() const override { return name_; }
    std::string description() const override { return description_; }

    void addOptions(Options& options) override {
        options.requiredTexts("ID", ids_, "The files and folders, by their ids");
        if (type_ != JobType::remove)
            options.requiredText("--to", folder_, "ID", "The folder they go to, by its id");
    }

    ExitStatus run(Host& host) override {
        const auto folder = type_ == JobType::remove ? std::nullopt : std::optional(folder_);
        return runJob(host, jobOver(host, type_, ids_, folder)) ? ExitStatus::success : ExitStatus::failure;
    }

  private:
    const std::string name_;
    const std::string description_;
    const JobType type_;
    std::vector<std::string> ids_;
    std::string folder_;
};

}  // namespace

std::unique_ptr<Command> makeJobCommand(std::string name, std::string description, JobType type) {
    return std::make_unique<JobCommand>(std::move(name), std::move(description), type);
}

}  // namespace quillbox
