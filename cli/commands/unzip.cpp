#include <memory>
#include <optional>
#include <string>

#include "cli/commands/commands.h"
#include "cli/file_job.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class Unzip : public Command {
  public:
    std::string name() const override { return "unzip"; }
    std::string description() const override { return "Make a folder of what a zip archive holds"; }

    void addOptions(Options& options) override {
        options.requiredText("ID", archive_, "", "The archive, by its id");
        options.text("--to", folder_, "ID",
                     "The folder that takes the new one; the archive's own without it");
        options.text("--password", password_, "TEXT", "Of an encrypted archive");
    }

    ExitStatus run(Host& host) override {
        auto bean = jobOver(host, JobType::unzip, {archive_}, folder_);
        bean.password = password_;
        return runJob(host, bean) ? ExitStatus::success : ExitStatus::failure;
    }

  private:
    std::string archive_;
    std::optional<std::string> folder_;
    std::optional<std::string> password_;
};

}  // namespace

std::unique_ptr<Command> makeUnzip() {
    return std::make_unique<Unzip>();
}

}  // namespace quillbox
