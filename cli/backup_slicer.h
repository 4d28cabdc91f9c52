#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "baseapi/core/slice_file.h"
#include "cli/backup_journal.h"
#include "hostkit/slice_file.h"

namespace quillbox {

/// Hashes the files of a backup, and tells the journal which file the calling thread works for from then on.
class BackupSlicer final : public baseapi::ISliceFile {
  public:
    /// What stands at a path that the library gives.
    struct Item {
        /// What people call it.
        std::string file;
        /// Why it is not to be sent; absent for what is.
        std::optional<std::string> obstacle;
        /// Let go of when the file has come to its end; may be absent.
        std::shared_ptr<void> copy;
    };
    using Identify = std::function<Item(const std::string&)>;

    BackupSlicer(std::shared_ptr<BackupJournal> journal, Identify identify)
        : journal_(std::move(journal)), identify_(std::move(identify)) {}

    std::optional<std::string> calcSha256(const baseapi::URL& of) override;

    /// From now on every file gives nothing, the one that is being read included.
    void stop();
    bool stopped() const { return stopped_; }

  private:
    const std::shared_ptr<BackupJournal> journal_;
    const Identify identify_;
    std::atomic<bool> stopped_ = false;
    hostkit::SliceFile slicer_{{[this](const auto&, const std::string& why) {
                                    const auto& trail = FileTrail::ofThread();
                                    if (trail && !stopped_) trail->cause.say(why);
                                },
                                nullptr}};
};

}  // namespace quillbox
