#include <memory>
#include <optional>
#include <string>

#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/file_backup.h"
#include "cli/host.h"
#include "cli/lent_photo_library.h"
#include "cli/module_code.h"
#include "cli/options.h"
#include "cli/private_folder.h"

namespace quillbox {
namespace {

class BackupAlbum : public Command {
  public:
    std::string name() const override { return "backup album"; }
    std::string description() const override { return "Back up the pictures and videos of a folder"; }

    void addOptions(Options& options) override {
        options_.addFileOptions(options);
        options.requiredText("--photos", folder_, "DIR",
                             "The folder; pictures and videos go by their suffix");
    }

    void equip(const Equipment& equipment) override {
        copies_.emplace(equipment.platform.temporaryFolder);
        equipment.platform.temporaryFolder = copies_->path();
        library_ =
            std::make_shared<LentPhotoLibrary>(folder_, copies_->path(), backup_.journal(), equipment.output);
        equipment.platform.photoLibrary = library_;
        backup_.equip(equipment);
    }

    ExitStatus run(Host& host) override {
        // Also where an interrupted run has not come to its end.
        const std::shared_ptr<void> removal(nullptr, [this](void*) {
            library_->close();
            copies_.reset();
        });
        return backup_.run(host, baseapi::CloudInstance::shared().getPhoneBackupImpl(), options_);
    }

  private:
    BackupOptions options_;
    std::string folder_;
    std::shared_ptr<LentPhotoLibrary> library_;
    std::optional<PrivateFolder> copies_;
    FileBackup backup_{{module_code::album, "the backup of the album", &baseapi::IPhoneBackup::backupAlbum,
                        [this] { library_->stop(); }},
                       [this](const std::string& path) { return library_->identify(path); }};
};

}  // namespace

std::unique_ptr<Command> makeBackupAlbum() {
    return std::make_unique<BackupAlbum>();
}

}  // namespace quillbox
