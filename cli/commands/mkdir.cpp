#include <memory>
#include <optional>

#include "cli/cloud_folder.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class Mkdir : public Command {
  public:
    std::string name() const override { return "mkdir"; }
    std::string description() const override { return "Make a folder, or find the one of that name"; }

    void addOptions(Options& options) override {
        options.requiredText("NAME", folderName_, "", "The folder's name");
        options.text("--parent", parent_, "ID", "The folder to make it in, by its id");
    }

    ExitStatus run(Host& host) override {
        const auto id = ensureFolder(host, folderName_, parent_);
        host.output().event(JsonLine("success").add("id", id).add("name", folderName_), {id});
        return ExitStatus::success;
    }

  private:
    std::string folderName_;
    std::optional<std::string> parent_;
};

}  // namespace

std::unique_ptr<Command> makeMkdir() {
    return std::make_unique<Mkdir>();
}

}  // namespace quillbox
