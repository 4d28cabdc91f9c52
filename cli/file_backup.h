#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "baseapi/backup/i_phone_backup.h"
#include "baseapi/platform/platform.h"
#include "cli/backup_journal.h"
#include "cli/backup_options.h"
#include "cli/backup_slicer.h"
#include "cli/command.h"
#include "cli/exit_status.h"
#include "cli/followed_transport.h"

namespace quillbox {

/// What the backups of folders and of the album have in common: the run itself, what is told of it, and its
/// end.
class FileBackup {
  public:
    struct Kind {
        const char* moduleCode;
        /// In words, such as "the backup of the folders".
        std::string name;
        bool (baseapi::IPhoneBackup::*start)(const std::string&, std::int64_t, baseapi::BackupCallback);
        /// What the host stops of its own at a Ctrl-C, beside the slicer.
        std::function<void()> stop = [] {};
    };
    FileBackup(Kind kind, BackupSlicer::Identify identify);

    void equip(const Equipment& equipment);
    const std::shared_ptr<BackupJournal>& journal() const { return journal_; }

    /// Told of the scopes that the service has named, before the run hears of them.
    using Scopes = FollowedTransport::Scopes;

    ExitStatus run(Host& host, baseapi::IPhoneBackup& service, const BackupOptions& options,
                   Scopes scopes = {});

  private:
    class Run;

    void observe(Host& host, Scopes scopes);
    ExitStatus tellEnd(Host& host, const baseapi::BackupResult::onComplete& end,
                       const BackupOptions& options) const;
    void tellFailures(Output& output, bool stopped) const;

    const Kind kind_;
    const std::shared_ptr<BackupJournal> journal_;
    const std::shared_ptr<BackupSlicer> slicer_;
    std::shared_ptr<FollowedTransport> transport_;
};

}  // namespace quillbox
