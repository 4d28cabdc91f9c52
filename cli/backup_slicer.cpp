#include "cli/backup_slicer.h"

namespace quillbox {

std::optional<std::string> BackupSlicer::calcSha256(const baseapi::URL& of) {
    auto item = identify_(of.path());
    FileTrail::ofThread() = stopped_ ? nullptr : journal_->begin(item.file);
    if (stopped_) return std::nullopt;
    const auto& trail = FileTrail::ofThread();
    trail->copy = std::move(item.copy);
    if (!item.obstacle) return slicer_.calcSha256(of);
    trail->cause.say(*item.obstacle);
    return std::nullopt;
}

void BackupSlicer::stop() {
    stopped_ = true;
    slicer_.stop();
}

}  // namespace quillbox
