#include <memory>
#include <optional>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/scope_options.h"

namespace quillbox {
namespace {

class Scopes : public Command {
  public:
    std::string name() const override { return "scopes"; }
    std::string description() const override { return "List the folders that a device backs up"; }
    void addOptions(Options& options) override { scope_.addOptions(options); }

    ExitStatus run(Host& host) override {
        const auto answer =
            host.ask("the backup scopes", baseapi::CloudInstance::shared().getBackupImpl(),
                     &baseapi::IBackUp::getScope, std::optional(scope_.bean<baseapi::BaseScopeBean>()));
        for (const auto& scope : answer.scopeList) tellScope(host.output(), scope);
        return ExitStatus::success;
    }

  private:
    ScopeOptions scope_;
};

}  // namespace

std::unique_ptr<Command> makeScopes() {
    return std::make_unique<Scopes>();
}

}  // namespace quillbox
