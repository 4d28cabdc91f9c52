#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "baseapi/backup/i_phone_backup.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/platform/platform.h"
#include "cli/backup_options.h"
#include "cli/commands/commands.h"
#include "cli/contact_records.h"
#include "cli/folder_causes.h"
#include "cli/followed_run.h"
#include "cli/host.h"
#include "cli/host_log.h"
#include "cli/job_display.h"
#include "cli/lent_address_book.h"
#include "cli/module_code.h"
#include "cli/options.h"
#include "hostkit/slice_file.h"

namespace quillbox {
namespace {

using baseapi::BackupContactResult;

constexpr const char* backupName = "the backup of the contacts";

/// The run as its callbacks see it, which the library may call after the command has ended.
class Run {
  public:
    explicit Run(const Host& host)
        : monitor_(host.monitor()),
          output_(host.output()),
          display_(host.output(), JobProgress::allShares, JobProgress::Unit::shares) {}

    void on(const baseapi::BackupProgress& progress) {
        display_.update(backupName, progress.percent * (JobProgress::allShares / 100),
                        JobProgress::allShares);
        output_.event(JsonLine("onProgress").add("hash", progress.hash).add("percent", progress.percent));
    }
    void on(const BackupContactResult& result) {
        result.visit(
            [&](const BackupContactResult::success& it) {
                JsonLine event("success");
                event.add("code", it.code).add("message", it.message);
                output_.event(event, {std::string(backupName) + " is complete", Line::Mark::good});
            },
            [&](const BackupContactResult::failure& it) {
                JsonLine event("failure");
                output_.event(event.add("errorCode", it.errorCode).add("errorMessage", it.errorMessage));
            });
        // A cancelled run may come to several ends; the first one counts.
        monitor_.change([&] {
            if (!end_) end_ = result;
        });
    }

    /// Under the lock of the monitor, or after the end.
    const std::optional<BackupContactResult>& end() const { return end_; }

  private:
    Monitor& monitor_;
    Output& output_;
    JobDisplay display_;
    std::optional<BackupContactResult> end_;
};

class BackupContacts : public Command {
  public:
    std::string name() const override { return "backup contacts"; }
    std::string description() const override { return "Back up an address book"; }

    void addOptions(Options& options) override {
        options_.addOptions(options);
        options.requiredText("--address-book", folder_, "DIR", "A folder of .vcf files, one contact each");
    }

    void equip(const Equipment& equipment) override {
        book_ = std::make_shared<LentAddressBook>(folder_, equipment.output);
        equipment.platform.addressBook = book_;
        equipment.log.setReader([this, &cause = equipment.log.uploadCause()](auto pieces) {
            folders_.read(pieces);
            cause.read(pieces);
        });
    }

    ExitStatus run(Host& host) override {
        auto& cloud = baseapi::CloudInstance::shared();
        cloud.sliceFile = std::make_shared<hostkit::SliceFile>(hostkit::SliceFile::Observers{
            [&host](const auto&, const std::string& why) { host.uploadCause().say(why); }, nullptr});
        warnOfContacts(host);
        const auto run = std::make_shared<Run>(host);
        const auto start = [&](std::shared_ptr<void> held) {
            return cloud.getPhoneBackupImpl().backupContact(
                "", options_.deviceId, 0,
                {[run, held = std::move(held)](const BackupContactResult& result) { run->on(result); },
                 [run](const baseapi::BackupProgress& progress) { run->on(progress); }});
        };
        const FollowedRun work{.moduleCode = module_code::contacts,
                               .name = backupName,
                               .start = start,
                               .ended = [run] { return run->end().has_value(); },
                               .waitingFor = [] { return std::string(backupName) + " to close"; }};
        if (!followRun(host, options_, work)) return ExitStatus::failure;
        return tellEnd(host, *run->end());
    }

  private:
    /// Warns when the contacts have been counted; a book that cannot be read has none to be compared.
    void warnOfContacts(const Host& host) const {
        if (book_->authorizationStatus() != baseapi::AddressBook::AuthorizationStatus::authorized) return;
        const auto before = contactsOfLastBackup(host, options_.deviceId);
        book_->onCounted = [before, &output = host.output()](std::int64_t contacts) {
            const auto warning = contactWarning(contacts, before);
            if (!warning.empty()) output.note("quillbox: warning: " + warning);
        };
    }

    ExitStatus tellEnd(Host& host, const BackupContactResult& end) const {
        return end.visit([&](const BackupContactResult::success&) { return tellSuccess(host.output()); },
                         [&](const BackupContactResult::failure& it) {
                             auto text = backupFailureText(backupName, it.errorCode, it.errorMessage);
                             if (const auto cause = host.uploadCause().cause()) text += ": " + *cause;
                             if (const auto cause = folders_.cause()) text += ": " + *cause;
                             host.output().note("quillbox: " + text);
                             return ExitStatus::failure;
                         });
    }

    /// To the library, a book that was lost on the way is an empty one.
    ExitStatus tellSuccess(Output& output) const {
        if (!book_->wasRead())
            output.note(
                "quillbox: warning: the address book could not be read, so the backup holds no contact");
        return ExitStatus::success;
    }

    BackupOptions options_;
    std::string folder_;
    std::shared_ptr<LentAddressBook> book_;
    FolderCauses folders_;
};

}  // namespace

std::unique_ptr<Command> makeBackupContacts() {
    return std::make_unique<BackupContacts>();
}

}  // namespace quillbox
