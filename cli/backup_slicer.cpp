#include "cli/backup_slicer.h"

namespace quillbox {

std::optional<std::string> BackupSlicer::calcSha256(const baseapi::URL& of) {
    const auto file = nameOf_(of.path());
    FileTrail::ofThread() = stopped_ ? nullptr : journal_->begin(file);
    if (stopped_) return std::nullopt;
    return slicer_.calcSha256(of);
}

void BackupSlicer::stop() {
    stopped_ = true;
    slicer_.stop();
}

}  // namespace quillbox
