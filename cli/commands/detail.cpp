#include <memory>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/json/codec.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class Detail : public Command {
  public:
    std::string name() const override { return "detail"; }
    std::string description() const override { return "Tell all about one file or folder"; }

    void addOptions(Options& options) override {
        options.requiredText("ID", id_, "", "The file or folder, by its id");
    }

    ExitStatus run(Host& host) override {
        baseapi::GetFileDetailBean bean;
        bean.fileId = id_;
        bean.containerId = baseapi::CloudInstance::shared().contentId.get();
        const auto answer = host.ask("the detail", baseapi::CloudInstance::shared().getFileImpl(),
                                     &baseapi::IFile::getFileDetail, std::optional(std::move(bean)));
        const JsonLine::Json record{baseapi::encode(answer).value_or("{}")};
        host.output().record(JsonLine("success").add("record", record), record);
        return ExitStatus::success;
    }

  private:
    std::string id_;
};

}  // namespace

std::unique_ptr<Command> makeDetail() {
    return std::make_unique<Detail>();
}

}  // namespace quillbox
