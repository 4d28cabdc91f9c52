#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/favor/i_favor.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/cloud_folder.h"
#include "cli/commands/commands.h"
#include "cli/cursor.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

constexpr std::int64_t favouritesPerPage = 200;

void tell(Output& output, const baseapi::StarFileInfo& item) {
    JsonLine event("item");
    event.add("id", item.id).add("name", item.fileName).add("folder", item.fileType == folderType);
    event.add("size", item.size).add("path", item.filePath).add("starredTime", item.starredTime);
    output.event(event, {item.id.value_or("") + "  " + item.filePath.value_or(item.fileName.value_or(""))});
}

class Favourites : public Command {
  public:
    std::string name() const override { return "favourites"; }
    std::string description() const override { return "List the favourites, the latest first"; }
    void addOptions(Options&) override {}

    ExitStatus run(Host& host) override {
        const std::string what = "the favourites";
        baseapi::GetStarFilesBean bean;
        bean.pageSize = favouritesPerPage;
        followCursor(host, what, [&](const auto& cursor) {
            bean.pageCursor = cursor;
            const auto answer = host.ask(what, baseapi::CloudInstance::shared().getFavorImpl(),
                                         &baseapi::IFavor::getStarFiles, std::optional(bean));
            if (answer.starFileList)
                for (const auto& item : *answer.starFileList) tell(host.output(), item);
            return answer.nextCursor.value_or("");
        });
        return ExitStatus::success;
    }
};

}  // namespace

std::unique_ptr<Command> makeFavourites() {
    return std::make_unique<Favourites>();
}

}  // namespace quillbox
