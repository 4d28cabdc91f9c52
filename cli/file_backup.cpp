#include "cli/file_backup.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>

#include "baseapi/core/backup_thread_pool_util.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "cli/followed_run.h"
#include "cli/host.h"
#include "cli/job_display.h"
#include "cli/quantity.h"

namespace quillbox {

using baseapi::BackupResult;

/// The run as its callback sees it, which the library may call after the command has ended.
class FileBackup::Run {
  public:
    Run(Monitor& monitor, Output& output) : monitor_(monitor), output_(output) {}

    void on(const BackupResult& result, const std::string& name) {
        result.visit(
            [&](const BackupResult::onProgress& it) {
                monitor_.change([&] { reported_ = true; });
                tell(it);
            },
            [&](const BackupResult::onComplete& it) {
                tell(it, name);
                monitor_.change([&] { end_ = it; });
            });
    }

    // Under the lock of the monitor, or after the end.
    bool reported() const { return reported_; }
    const std::optional<BackupResult::onComplete>& end() const { return end_; }

  private:
    /// Each file's thread tells where the run stands, so that what one has seen may come after the end.
    void tell(const BackupResult::onProgress& now) {
        std::lock_guard lock(telling_);
        if (toldEnd_) return;
        output_.event(JsonLine("onProgress").add("succCount", now.succCount).add("failCount", now.failCount));
    }

    void tell(const BackupResult::onComplete& end, const std::string& name) {
        std::lock_guard lock(telling_);
        toldEnd_ = true;
        JsonLine event("onComplete");
        event.add("succCount", end.succCount).add("failCount", end.failCount);
        event.add("code", end.code).add("msg", end.msg);
        const bool good = end.code == baseapi::Constants::BACKUP_SUCCESS && end.failCount == 0;
        output_.event(event, {name + ": " + countText(end.succCount, "file") + " backed up, " +
                                  std::to_string(end.failCount) + " failed",
                              good ? Line::Mark::good : Line::Mark::bad});
    }

    Monitor& monitor_;
    Output& output_;
    bool reported_ = false;
    std::optional<BackupResult::onComplete> end_;
    std::mutex telling_;
    bool toldEnd_ = false;
};

FileBackup::FileBackup(Kind kind, BackupSlicer::Identify identify)
    : kind_(std::move(kind)),
      journal_(std::make_shared<BackupJournal>()),
      slicer_(std::make_shared<BackupSlicer>(journal_, std::move(identify))) {}

void FileBackup::equip(const Equipment& equipment) {
    transport_ = followTransport(equipment.platform, journal_);
    equipment.log.setReader([journal = journal_](auto pieces) { journal->read(pieces); });
}

ExitStatus FileBackup::run(Host& host, baseapi::IPhoneBackup& service, const BackupOptions& options,
                           Scopes scopes) {
    baseapi::CloudInstance::shared().sliceFile = slicer_;
    if (baseapi::BackupThreadPoolUtil::queue().width() == 0)
        host.output().note(
            "quillbox: this machine has one active processor, so no file is ever sent; see quillbox doctor");
    observe(host, std::move(scopes));

    const auto run = std::make_shared<Run>(host.monitor(), host.output());
    const auto start = [&](std::shared_ptr<void> held) {
        return (service.*kind_.start)("", options.deviceId,
                                      [run, held = std::move(held), name = kind_.name](
                                          const BackupResult& result) { run->on(result, name); });
    };
    const auto waitingFor = [name = kind_.name, run, &monitor = host.monitor()] {
        bool reported = false;
        monitor.change([&] { reported = run->reported(); });
        return reported ? "the files that are being sent; no further one is begun, and " + name +
                              " is closed with what is there by then"
                        : name + " to close";
    };
    const FollowedRun work{kind_.moduleCode,
                           kind_.name,
                           start,
                           [run] { return run->end().has_value(); },
                           [slicer = slicer_, stop = kind_.stop] {
                               slicer->stop();
                               stop();
                           },
                           waitingFor};
    if (!followRun(host, options, work)) return ExitStatus::failure;
    host.output().endProgress();
    return tellEnd(host, *run->end(), options);
}

void FileBackup::observe(Host& host, Scopes scopes) {
    transport_->setScopes(std::move(scopes));
    auto display = std::make_shared<std::optional<JobDisplay>>();
    journal_->onProgress = [display, first = std::make_shared<std::once_flag>(),
                            &output = host.output()](const BackupJournal::Progress& now) {
        std::call_once(*first, [&] { display->emplace(output, now.allBytes); });
        (*display)->update(
            std::to_string(now.files) + " of " + countText(static_cast<std::int64_t>(now.allFiles), "file"),
            now.bytes, now.allBytes);
    };
}

ExitStatus FileBackup::tellEnd(Host& host, const BackupResult::onComplete& end,
                               const BackupOptions& options) const {
    using baseapi::Constants;
    auto& output = host.output();
    for (const auto& text : journal_->leftOut()) output.note(text);
    tellFailures(output, slicer_->stopped() || end.code != Constants::BACKUP_SUCCESS);
    if (end.code != Constants::BACKUP_SUCCESS) {
        output.note("quillbox: " + backupFailureText(kind_.name, end.code, end.msg));
        return ExitStatus::failure;
    }
    return options.failOnPartial && end.failCount > 0 ? ExitStatus::partial : ExitStatus::success;
}

/// `stopped`: the run came to its end before all files did.
void FileBackup::tellFailures(Output& output, bool stopped) const {
    std::int64_t notSent = 0;
    for (const auto& [file, begun, cause] : journal_->failures()) {
        if (cause)
            output.note(file + ": " + *cause);
        else if (stopped)
            ++notSent;
        else if (begun)
            output.note(file + ": the cause is not known");
        else if (std::error_code ignored; std::filesystem::exists(file, ignored))
            output.note(file + ": it was never begun; the cause is not known");
    }
    if (notSent > 0)
        output.note("quillbox: " + countText(notSent, "file") + " not sent, as the backup was stopped");
}

}  // namespace quillbox
