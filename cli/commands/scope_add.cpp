#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"
#include "cli/scope_options.h"

namespace quillbox {
namespace {

class ScopeAdd : public Command {
  public:
    std::string name() const override { return "scope-add"; }
    std::string description() const override { return "Add a folder to those that a device backs up"; }

    void addOptions(Options& options) override {
        options.requiredText("DIR", folder_, "", "The folder on this machine");
        options.requiredText("TARGET", target_, "", "The cloud folder it goes to, such as /backup/notes");
        scope_.addOptions(options);
    }

    ExitStatus run(Host& host) override {
        const std::string what = "the new backup scope";
        auto bean = scope_.bean<baseapi::AddScopeBean>();
        const auto folder = std::filesystem::absolute(folder_).lexically_normal();
        bean.scopeList = {baseapi::PathPair{.localPath = folder.string(), .targetFolderPath = target_}};
        const auto answer = host.ask(what, baseapi::CloudInstance::shared().getBackupImpl(),
                                     &baseapi::IBackUp::addScope, std::optional(std::move(bean)));
        for (const auto& failed : answer.failedScopeList)
            throw ServiceFailure{what, -1, failed.errorCode.value_or("") + " " + failed.msg.value_or("")};
        for (const auto& scope : answer.scopeList) tellScope(host.output(), scope);
        return ExitStatus::success;
    }

  private:
    std::string folder_;
    std::string target_;
    ScopeOptions scope_;
};

}  // namespace

std::unique_ptr<Command> makeScopeAdd() {
    return std::make_unique<ScopeAdd>();
}

}  // namespace quillbox
