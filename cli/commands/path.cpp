#include <memory>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class Path : public Command {
  public:
    std::string name() const override { return "path"; }
    std::string description() const override { return "Tell where a file or a folder lies"; }

    void addOptions(Options& options) override {
        options.requiredText("ID", id_, "", "The file or folder, by its id");
    }

    ExitStatus run(Host& host) override {
        baseapi::FilesPathBean bean;
        bean.fileId = id_;
        bean.containerId = baseapi::CloudInstance::shared().contentId.get();
        const auto answer = host.ask("the path", baseapi::CloudInstance::shared().getFileImpl(),
                                     &baseapi::IFile::filesPath, std::optional(std::move(bean)));
        JsonLine event("success");
        event.add("namePath", answer.namePath).add("fileIdPath", answer.fileIdPath);
        host.output().event(event, {answer.namePath.value_or("")});
        return ExitStatus::success;
    }

  private:
    std::string id_;
};

}  // namespace

std::unique_ptr<Command> makePath() {
    return std::make_unique<Path>();
}

}  // namespace quillbox
