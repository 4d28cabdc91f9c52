#include "cli/backup_slicer.h"

#include <utility>

namespace quillbox {

std::optional<std::string> BackupSlicer::calcSha256(const baseapi::URL& of) {
    auto item = identify_(of.path());
    auto& trail = FileTrail::ofThread();
    trail = stopped_ ? nullptr : journal_->begin(item.file);
    if (!trail) return std::nullopt;
    trail->copy = std::move(item.copy);
    if (item.obstacle) {
        trail->cause.say(*item.obstacle);
        return std::nullopt;
    }
    auto text = slicer_.calcSha256(of);
    // What was stopped has not failed: nothing that the library says of it from now on is a cause.
    if (!text && stopped_) std::exchange(trail, nullptr)->copy.reset();
    return text;
}

void BackupSlicer::stop() {
    stopped_ = true;
    slicer_.stop();
}

}  // namespace quillbox
