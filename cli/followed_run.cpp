#include "cli/followed_run.h"

#include <utility>

#include "baseapi/backup/i_phone_backup.h"
#include "baseapi/core/cancelable.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "cli/backup_options.h"
#include "cli/host.h"

namespace quillbox {
namespace {

void cancel(const char* moduleCode) {
    baseapi::CloudInstance::shared().getPhoneBackupImpl().getBackupManager(moduleCode)->cancel();
}

void waitForEnd(Host& host, const BackupOptions& options, const FollowedRun& run) {
    auto& monitor = host.monitor();
    if (options.cancelAfter && !monitor.wait(run.ended, Monitor::after(*options.cancelAfter)) &&
        !monitor.interrupted())
        cancel(run.moduleCode);
    if (monitor.wait(run.ended)) return;
    host.output().note(
        "quillbox: the backup did not end in time; what it holds on the service is freed by the next one");
    throw Interrupted{};
}

}  // namespace

bool followRun(Host& host, const BackupOptions& options, const FollowedRun& run) {
    host.refreshToken();
    auto held = std::make_shared<char>();
    const std::weak_ptr<void> underWay = held;
    const bool started = run.start(std::move(held));
    bool ended = false;
    host.monitor().change([&] { ended = run.ended(); });
    if (!started && !ended) {
        host.output().event(JsonLine("notStarted"), {run.name + " was not started", Line::Mark::bad});
        return false;
    }
    host.interrupt().setWork({[moduleCode = run.moduleCode, stop = run.stop] {
                                  cancel(moduleCode);
                                  stop();
                              },
                              run.waitingFor});
    waitForEnd(host, options, run);
    host.settle(underWay);
    return true;
}

std::string backupFailureText(const std::string& run, std::int64_t code, const std::string& message) {
    using baseapi::Constants;
    if (code == Constants::BACKUP_USER_CANCEL) return run + " was cancelled";
    const bool ofLibrary =
        code >= Constants::BACKUP_PARAMS_INVALID && code <= Constants::BACKUP_HAS_TASK_RUNNING;
    if (ofLibrary) return run + " failed: " + message + " (" + std::to_string(code) + ")";
    return run + " failed: " + failureText("a request of it", code, message);
}

}  // namespace quillbox
