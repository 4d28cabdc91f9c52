#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/album/i_album.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/cursor.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

constexpr std::int64_t filesPerPage = 200;

void tell(Output& output, const baseapi::AlbumContent& file) {
    JsonLine event("item");
    event.add("id", file.id).add("name", file.fileName).add("ownerId", file.ownerId);
    event.add("takeTime", file.takeTime).add("url", file.contentUrl);
    output.event(event, {file.id.value_or("") + "  " + file.fileName.value_or("")});
}

class ListAlbum : public Command {
  public:
    std::string name() const override { return "album"; }
    std::string description() const override { return "List the files of an album"; }

    void addOptions(Options& options) override {
        options.requiredText("ALBUM", album_, "", "The album's id");
    }

    ExitStatus run(Host& host) override {
        const std::string what = "the album";
        baseapi::GetAlbumFileListReq bean;
        bean.albumId = album_;
        bean.pageSize = filesPerPage;
        followCursor(host, what, [&](const auto& cursor) {
            bean.pageCursor = cursor;
            const auto answer = host.ask(what, baseapi::CloudInstance::shared().getAlbumImpl(),
                                         &baseapi::IAlbum::albumContentList, std::optional(bean));
            for (const auto& file : answer.contentList.value_or(std::vector<baseapi::AlbumContent>{}))
                tell(host.output(), file);
            return answer.nextPageCursor.value_or("");
        });
        return ExitStatus::success;
    }

  private:
    std::string album_;
};

}  // namespace

std::unique_ptr<Command> makeAlbum() {
    return std::make_unique<ListAlbum>();
}

}  // namespace quillbox
