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

class Share : public Command {
  public:
    std::string name() const override { return "share"; }
    std::string description() const override { return "Make a link to files and folders"; }

    void addOptions(Options& options) override {
        options.requiredTexts("ID", bean_.fileIds.emplace(), "The files and folders, by their ids");
        options.text("--code", bean_.extractCode, "TEXT", "The extract code that the link asks for");
        options.integer("--days", bean_.validDays, "N", "How long the link opens, in days");
        options.text("--expires", bean_.expireTime, "TIME", "Until when, such as 2030-01-02T03:04:05Z");
        options.text("--comment", bean_.comment, "TEXT", "Words for the visitors");
    }

    ExitStatus run(Host& host) override {
        bean_.containerId = baseapi::CloudInstance::shared().contentId.get();
        const auto answer = host.ask("the link", baseapi::CloudInstance::shared().getShareImpl(),
                                     &baseapi::IShare::createShare, std::optional(bean_));
        const auto link = answer.shareLink.value_or(baseapi::ShareLink{});
        JsonLine event("share");
        event.add("id", link.shareId).add("url", link.linkUrl).add("code", link.extractCode);
        event.add("expires", link.expireTime);
        host.output().event(event, {link.linkUrl.value_or("")});
        return ExitStatus::success;
    }

  private:
    baseapi::CreateShareBean bean_;
};

}  // namespace

std::unique_ptr<Command> makeShare() {
    return std::make_unique<Share>();
}

}  // namespace quillbox
