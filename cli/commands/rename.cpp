#include <memory>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class Rename : public Command {
  public:
    std::string name() const override { return "rename"; }
    std::string description() const override { return "Give a file or a folder another name"; }

    void addOptions(Options& options) override {
        options.requiredText("ID", id_, "", "The file or folder, by its id");
        options.requiredText("NAME", newName_, "", "Its name from now on");
    }

    ExitStatus run(Host& host) override {
        baseapi::FilesRenameBean bean;
        bean.fileId = id_;
        bean.name = newName_;
        bean.containerId = baseapi::CloudInstance::shared().contentId.get();
        host.ask("the new name", baseapi::CloudInstance::shared().getFileImpl(), &baseapi::IFile::fileRename,
                 std::optional(std::move(bean)));
        host.output().event(JsonLine("success").add("id", id_).add("name", newName_),
                            {newName_, Line::Mark::good});
        return ExitStatus::success;
    }

  private:
    std::string id_;
    std::string newName_;
};

}  // namespace

std::unique_ptr<Command> makeRename() {
    return std::make_unique<Rename>();
}

}  // namespace quillbox
