#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/share/i_share.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

/// Whether the link was ended.
bool tell(Output& output, const baseapi::ShareSubResponse& entry) {
    const auto id = entry.shareId.value_or("");
    if (entry.code == 0) {
        output.event(JsonLine("success").add("id", id), {id, Line::Mark::good});
        return true;
    }
    output.event(JsonLine("failure").add("id", id).add("code", entry.code).add("message", entry.msg),
                 {id + "  " + std::to_string(entry.code.value_or(-1)) + " " + entry.msg.value_or(""),
                  Line::Mark::bad});
    return false;
}

class Unshare : public Command {
  public:
    std::string name() const override { return "unshare"; }
    std::string description() const override { return "End links; their files stay"; }

    void addOptions(Options& options) override {
        options.requiredTexts("ID", ids_, "The links, by the ids that \"shares\" tells");
    }

    ExitStatus run(Host& host) override {
        const auto answer =
            host.ask("the end of the links", baseapi::CloudInstance::shared().getShareImpl(),
                     &baseapi::IShare::cancelShare, std::optional(baseapi::CancelShareBean{ids_}));
        bool all = true;
        for (const auto& entry : answer.subResponseList.value_or(std::vector<baseapi::ShareSubResponse>{}))
            all = tell(host.output(), entry) && all;
        return all ? ExitStatus::success : ExitStatus::failure;
    }

  private:
    std::vector<std::string> ids_;
};

}  // namespace

std::unique_ptr<Command> makeUnshare() {
    return std::make_unique<Unshare>();
}

}  // namespace quillbox
