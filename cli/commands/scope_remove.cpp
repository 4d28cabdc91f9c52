#include <cstdint>
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

class ScopeRemove : public Command {
  public:
    std::string name() const override { return "scope-remove"; }
    std::string description() const override { return "Take a folder from those that a device backs up"; }

    void addOptions(Options& options) override {
        options.integer("ID", id_, "", "The scope, by its id in quillbox scopes");
        scope_.addOptions(options);
    }

    ExitStatus run(Host& host) override {
        const std::string what = "the removal of a backup scope";
        if (!id_) throw UsageError{"scope-remove needs the scope's id; quillbox scopes lists them"};
        auto bean = scope_.bean<baseapi::DeleteScopeBean>();
        bean.scopeIdList = {*id_};
        const auto answer = host.ask(what, baseapi::CloudInstance::shared().getBackupImpl(),
                                     &baseapi::IBackUp::deleteScope, std::optional(std::move(bean)));
        for (const auto& failed : answer.failedScopeList)
            throw ServiceFailure{what, -1, failed.errorCode + " " + failed.msg};
        host.output().event(JsonLine("success").add("scopeId", *id_),
                            {"removed " + std::to_string(*id_), Line::Mark::good});
        return ExitStatus::success;
    }

  private:
    std::optional<std::int64_t> id_;
    ScopeOptions scope_;
};

}  // namespace

std::unique_ptr<Command> makeScopeRemove() {
    return std::make_unique<ScopeRemove>();
}

}  // namespace quillbox
