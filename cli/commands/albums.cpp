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

constexpr std::int64_t albumsPerPage = 200;

void tell(Output& output, const baseapi::AlbumItem& album) {
    JsonLine event("album");
    event.add("id", album.id).add("name", album.name).add("createTime", album.createTime);
    output.event(event, {album.id.value_or("") + "  " + album.name.value_or("")});
}

class ListAlbums : public Command {
  public:
    std::string name() const override { return "albums"; }
    std::string description() const override { return "List the albums, the newest first"; }
    void addOptions(Options&) override {}

    ExitStatus run(Host& host) override {
        const std::string what = "the albums";
        baseapi::GetAlbumListReq bean;
        bean.pageSize = albumsPerPage;
        bean.pageNum = 0;
        followCursor(host, what, [&](const auto&) {
            ++*bean.pageNum;
            const auto answer = host.ask(what, baseapi::CloudInstance::shared().getAlbumImpl(),
                                         &baseapi::IAlbum::albumList, std::optional(bean));
            for (const auto& album : answer.albumList.value_or(std::vector<baseapi::AlbumItem>{}))
                tell(host.output(), album);
            return answer.nextPageCursor.value_or("");
        });
        return ExitStatus::success;
    }
};

}  // namespace

std::unique_ptr<Command> makeAlbums() {
    return std::make_unique<ListAlbums>();
}

}  // namespace quillbox
