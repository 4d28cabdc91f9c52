#include "cli/backup_options.h"

#include "baseapi/backup/i_phone_backup.h"
#include "baseapi/core/cancelable.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

using baseapi::Constants;

}  // namespace

void BackupOptions::addOptions(Options& options) {
    options.requiredInteger("--device-id", deviceId, "N", "The device, by its id in quillbox devices");
    options.seconds("--cancel-after", cancelAfter, "SECONDS", "Cancel the backup so long after its start");
}

void BackupOptions::addFileOptions(Options& options) {
    addOptions(options);
    options.flag("--fail-on-partial", failOnPartial,
                 "Exit with 4 where files failed, though the backup ended");
}

void waitForBackup(Host& host, const std::string& moduleCode, const BackupOptions& options,
                   const std::function<bool()>& ended) {
    auto& monitor = host.monitor();
    if (options.cancelAfter && !monitor.wait(ended, Monitor::after(*options.cancelAfter)))
        cancelBackup(moduleCode);
    if (monitor.wait(ended)) return;
    host.output().note(
        "quillbox: the backup did not end in time; what it holds on the service is freed by the next one");
    throw Interrupted{};
}

ExitStatus tellNotStarted(Output& output, const std::string& run) {
    output.event(JsonLine("notStarted"), {run + " was not started", Line::Mark::bad});
    return ExitStatus::failure;
}

void cancelBackup(const std::string& moduleCode) {
    baseapi::CloudInstance::shared().getPhoneBackupImpl().getBackupManager(moduleCode)->cancel();
}

std::string backupFailureText(const std::string& run, std::int64_t code, const std::string& message) {
    if (code == Constants::BACKUP_USER_CANCEL) return run + " was cancelled";
    const bool ofLibrary =
        code >= Constants::BACKUP_PARAMS_INVALID && code <= Constants::BACKUP_HAS_TASK_RUNNING;
    if (ofLibrary) return run + " failed: " + message + " (" + std::to_string(code) + ")";
    return run + " failed: " + failureText("a request of it", code, message);
}

}  // namespace quillbox
