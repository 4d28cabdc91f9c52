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
    /// `nameOf`: what people call the file at a path.
    BackupSlicer(std::shared_ptr<BackupJournal> journal,
                 std::function<std::string(const std::string&)> nameOf)
        : journal_(std::move(journal)), nameOf_(std::move(nameOf)) {}

    std::optional<std::string> calcSha256(const baseapi::URL& of) override;

    /// From now on every file gives nothing, the one that is being read included.
    void stop();
    bool stopped() const { return stopped_; }

  private:
    const std::shared_ptr<BackupJournal> journal_;
    const std::function<std::string(const std::string&)> nameOf_;
    std::atomic<bool> stopped_ = false;
    hostkit::SliceFile slicer_{{[](const auto&, const std::string& why) {
                                    if (const auto& trail = FileTrail::ofThread()) trail->cause.say(why);
                                },
                                nullptr}};
};

}  // namespace quillbox
