#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/share/i_share.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/cursor.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

constexpr std::int64_t sharesPerPage = 200;
constexpr std::int64_t serviceOrder = 0;  // the newest first
// What the service calls a link that opens no more.
constexpr std::int64_t expired = 1;
constexpr std::int64_t empty = 2;

std::string stateOf(const baseapi::ShareByMeLink& link) {
    if (link.status == expired) return "expired";
    if (link.status == empty) return "its files are gone";
    return link.expireTime ? "until " + *link.expireTime : "without an end";
}

void tell(Output& output, const baseapi::ShareByMeLink& link) {
    JsonLine event("share");
    event.add("id", link.shareId).add("url", link.linkUrl).add("name", link.displayName);
    event.add("status", link.status).add("expires", link.expireTime).add("comment", link.comment);
    event.add("views", link.viewCnt).add("downloads", link.downloadCnt);
    output.event(event, {link.shareId.value_or("") + "  " + link.linkUrl.value_or("") + "  " +
                         link.displayName.value_or("") + "  " + stateOf(link) + "  views " +
                         std::to_string(link.viewCnt.value_or(0)) + ", downloads " +
                         std::to_string(link.downloadCnt.value_or(0))});
}

class ListShares : public Command {
  public:
    std::string name() const override { return "shares"; }
    std::string description() const override { return "List the links that were made, the newest first"; }
    void addOptions(Options&) override {}

    ExitStatus run(Host& host) override {
        const std::string what = "the links";
        followCursor(host, what, [&](const auto& cursor) {
            const baseapi::GetShareBean bean(sharesPerPage, cursor, serviceOrder, serviceOrder, std::nullopt,
                                             std::nullopt);
            const auto answer = host.ask(what, baseapi::CloudInstance::shared().getShareImpl(),
                                         &baseapi::IShare::getShares, std::optional(bean));
            for (const auto& link : answer.shareLinks.value_or(std::vector<baseapi::ShareByMeLink>{}))
                tell(host.output(), link);
            return answer.nextCursor.value_or("");
        });
        return ExitStatus::success;
    }
};

}  // namespace

std::unique_ptr<Command> makeShares() {
    return std::make_unique<ListShares>();
}

}  // namespace quillbox
