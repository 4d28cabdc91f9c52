#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/album/i_album.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class AlbumAdd : public Command {
  public:
    std::string name() const override { return "album-add"; }
    std::string description() const override { return "Put files into an album; they stay in their folders"; }

    void addOptions(Options& options) override {
        options.requiredText("ALBUM", album_, "", "The album's id");
        options.requiredTexts("ID", ids_, "The files, by their ids");
    }

    ExitStatus run(Host& host) override {
        baseapi::BatchAddContent2AlbumReq files;
        auto& wanted = files.fileIds.emplace();
        for (const auto& id : ids_) wanted.push_back({.fileId = id, .ownerId = std::nullopt});
        host.ask("the album", baseapi::CloudInstance::shared().getAlbumImpl(),
                 &baseapi::IAlbum::albumContentAdd,
                 std::optional(baseapi::BatchAddContent2AlbumReqEx{album_, std::move(files)}));
        for (const auto& id : ids_)
            host.output().event(JsonLine("success").add("album", album_).add("id", id),
                                {id, Line::Mark::good});
        return ExitStatus::success;
    }

  private:
    std::string album_;
    std::vector<std::string> ids_;
};

}  // namespace

std::unique_ptr<Command> makeAlbumAdd() {
    return std::make_unique<AlbumAdd>();
}

}  // namespace quillbox
