#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/album/i_album.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class AlbumMake : public Command {
  public:
    std::string name() const override { return "album-make"; }
    std::string description() const override { return "Make an album"; }

    void addOptions(Options& options) override {
        options.requiredText("NAME", albumName_, "", "The album's name");
        options.text("--folder", folder_, "ID",
                     "A folder whose files belong to the album, with those of the folders below");
    }

    ExitStatus run(Host& host) override {
        baseapi::CreateAlbumReq bean;
        bean.name = albumName_;
        bean.containerId = baseapi::CloudInstance::shared().contentId.get();
        if (folder_) bean.scopeDir = {*folder_};
        const auto answer = host.ask("the new album", baseapi::CloudInstance::shared().getAlbumImpl(),
                                     &baseapi::IAlbum::albumCreate, std::optional(std::move(bean)));
        const auto id = answer.albumId.value_or("");
        host.output().event(JsonLine("success").add("id", id).add("name", albumName_), {id});
        return ExitStatus::success;
    }

  private:
    std::string albumName_;
    std::optional<std::string> folder_;
};

}  // namespace

std::unique_ptr<Command> makeAlbumMake() {
    return std::make_unique<AlbumMake>();
}

}  // namespace quillbox
