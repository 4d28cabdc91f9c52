#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/platform/no_photo_library.h"
#include "cli/commands/commands.h"
#include "cli/file_backup.h"
#include "cli/folder_walk.h"
#include "cli/host.h"
#include "cli/host_log.h"
#include "cli/module_code.h"
#include "cli/options.h"
#include "cli/quantity.h"
#include "cli/text.h"

namespace quillbox {
namespace {

/// The library asks for the permission to the photos before it reads folders; here there is nothing to ask.
class PermittedPhotoLibrary final : public baseapi::NoPhotoLibrary {
  public:
    int authorizationStatus() override { return authorized; }
};

/// Why a file would not be sent, empty where it would.
std::string obstacle(const std::string& file) {
    if (!isUtf8(file)) return "its name is not valid UTF-8";
    struct stat status {};
    if (::stat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) return "no regular file";
    if (::access(file.c_str(), R_OK) == 0) return {};
    return std::generic_category().message(errno);
}

class BackupDirs : public Command {
  public:
    std::string name() const override { return "backup dirs"; }
    std::string description() const override {
        return "Back up the folders that are the device's scopes, with all that they hold";
    }

    void addOptions(Options& options) override {
        options_.addFileOptions(options);
        options.flag("--dry-run", dryRun_, "Tell what would be sent, and send nothing");
    }

    void equip(const Equipment& equipment) override {
        equipment.platform.photoLibrary = std::make_shared<PermittedPhotoLibrary>();
        backup_.equip(equipment);
    }

    ExitStatus run(Host& host) override {
        if (dryRun_) return tellWhatWouldBeSent(host);
        return backup_.run(host, baseapi::CloudInstance::shared().getPhoneBackupImpl(), options_,
                           [this, &output = host.output()](const auto& scopes) {
                               const HostLog::Unwritten walkOfTheHost;
                               walkScopes(output, scopes, [this](baseapi::FileDetailBean&& file) {
                                   backup_.journal()->expect(std::move(file.filePath), file.fileSize,
                                                             std::move(file.cloudPath));
                               });
                           });
    }

  private:
    ExitStatus tellWhatWouldBeSent(Host& host) const {
        auto& output = host.output();
        const auto answer = host.ask("the backup scopes", baseapi::CloudInstance::shared().getBackupImpl(),
                                     &baseapi::IBackUp::getScope,
                                     std::optional(baseapi::BaseScopeBean{.deviceId = options_.deviceId,
                                                                          .moduleCode = module_code::dirs}));
        std::int64_t files = 0;
        std::int64_t bytes = 0;
        walkScopes(output, answer.scopeList, [&](const baseapi::FileDetailBean& file) {
            if (const auto why = obstacle(file.filePath); !why.empty())
                return output.note(file.filePath + ": would not be sent: " + why);
            ++files;
            bytes += file.fileSize;
            tell(output, file);
        });
        for (const auto& text : backup_.journal()->leftOut()) output.note(text);
        output.event(JsonLine("total").add("files", files).add("bytes", bytes),
                     {countText(files, "file") + ", " + byteText(static_cast<double>(bytes))});
        return ExitStatus::success;
    }

    static void tell(Output& output, const baseapi::FileDetailBean& file) {
        JsonLine event("file");
        event.add("file", file.filePath).add("bytes", file.fileSize).add("cloudPath", *file.cloudPath);
        output.event(event, {file.filePath + "  " + byteText(static_cast<double>(file.fileSize)) + "  ->  " +
                             *file.cloudPath});
    }

    BackupOptions options_;
    bool dryRun_ = false;
    FileBackup backup_{{module_code::dirs, "the backup of the folders", &baseapi::IPhoneBackup::backupDirs},
                       [](const std::string& path) {
                           return BackupSlicer::Item{path, {}, {}};
                       }};
};

}  // namespace

std::unique_ptr<Command> makeBackupDirs() {
    return std::make_unique<BackupDirs>();
}

}  // namespace quillbox
