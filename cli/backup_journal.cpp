#include "cli/backup_journal.h"

#include <algorithm>
#include <utility>

namespace quillbox {
namespace {

constexpr std::string_view uploaded = "UploadOperation onSuccess";
constexpr std::string_view notUploaded = "UploadOperation onFailure";
constexpr std::string_view unreadable = "generateFileDetailBeans path failed : ";
constexpr std::string_view leadsBack = "generateFileDetailBeans link leads back : ";

}  // namespace

void BackupJournal::expect(std::string file, std::int64_t size,
                           std::shared_ptr<const std::string> cloudPath) {
    std::lock_guard lock(mutex_);
    auto& entry = entries_[std::move(file)];
    entry.size = size;
    entry.waiting.push_back(std::move(cloudPath));
    progress_.allBytes += size;
    ++progress_.allFiles;
}

std::shared_ptr<FileTrail> BackupJournal::begin(const std::string& file) {
    auto trail = std::make_shared<FileTrail>(file);
    std::lock_guard lock(mutex_);
    auto& entry = entries_[file];
    entry.trails.push_back(trail);
    // Which of its scopes has come to it is not known; the library takes them in their order.
    if (!entry.waiting.empty()) entry.waiting.erase(entry.waiting.begin());
    return trail;
}

void BackupJournal::read(std::span<const std::string_view> pieces) {
    if (pieces.empty()) return;
    folders_.read(pieces);
    const auto beginning = pieces.front();
    if (beginning == unreadable || beginning == leadsBack) readOfWalk(joinedLine(pieces));
    const auto trail = FileTrail::ofThread();
    if (!trail) return;
    trail->cause.read(pieces);
    const bool good = beginning.starts_with(uploaded);
    if (good || beginning.starts_with(notUploaded)) {
        trail->copy.reset();
        FileTrail::leaveThread();
    }
    if (good) succeeded(trail);
}

void BackupJournal::readOfWalk(std::string_view line) {
    std::string text;
    if (line.starts_with(leadsBack)) {
        text =
            std::string(line.substr(leadsBack.size())) + ": left out, as it leads back to a folder above it";
    } else {
        constexpr std::string_view between = ", error: ";
        const auto error = std::min(line.rfind(between), line.size());
        text = std::string(line.substr(unreadable.size(), error - unreadable.size())) +
               ": the folder cannot be read whole: " +
               std::string(line.substr(std::min(error + between.size(), line.size())));
    }
    std::lock_guard lock(mutex_);
    leftOut_.insert(std::move(text));
}

void BackupJournal::created(const std::shared_ptr<FileTrail>& trail,
                            const baseapi::FilesCreateResponse& response) {
    // What the service has already is never completed.
    if (!response.multiParts) return;
    std::lock_guard lock(mutex_);
    if (response.fileId) byId_[*response.fileId] = trail;
    for (const auto& part : *response.multiParts)
        if (part.uploadUrl) byPart_[*part.uploadUrl] = trail;
}

std::shared_ptr<FileTrail> BackupJournal::trailOfId(const std::string& fileId) {
    return take(byId_, fileId);
}

std::shared_ptr<FileTrail> BackupJournal::trailOfPart(const std::string& url) {
    return take(byPart_, url);
}

std::shared_ptr<FileTrail> BackupJournal::take(Trails& trails, const std::string& key) {
    std::lock_guard lock(mutex_);
    const auto found = trails.extract(key);
    return found ? found.mapped().lock() : nullptr;
}

void BackupJournal::moved(FileTrail& trail, std::int64_t bytes) {
    trail.sent += bytes;
    {
        std::lock_guard lock(mutex_);
        progress_.bytes += bytes;
    }
    tellProgress();
}

void BackupJournal::succeeded(const std::shared_ptr<FileTrail>& trail) {
    {
        std::lock_guard lock(mutex_);
        auto& entry = entries_[trail->file];
        if (std::erase(entry.trails, trail) == 0) return;
        // What the service had already has not moved, and is done all the same.
        progress_.bytes += entry.size - trail->sent;
        ++progress_.files;
    }
    tellProgress();
}

void BackupJournal::tellProgress() const {
    if (!onProgress) return;
    std::unique_lock lock(mutex_);
    const auto now = progress_;
    lock.unlock();
    onProgress(now);
}

std::vector<BackupJournal::Failure> BackupJournal::failures() const {
    std::vector<Failure> failures;
    std::unique_lock lock(mutex_);
    for (const auto& [file, entry] : entries_) {
        for (const auto& trail : entry.trails) failures.push_back({file, true, trail->cause.cause()});
        for (const auto& cloudPath : entry.waiting)
            failures.push_back({file, false, folderCause(*cloudPath)});
    }
    lock.unlock();
    std::ranges::sort(failures, {}, &Failure::file);
    return failures;
}

std::optional<std::string> BackupJournal::folderCause(const std::string& cloudPath) const {
    auto cause = folders_.causeFor(cloudPath);
    if (cause) cause->insert(0, "its folder could not be made: ");
    return cause;
}

std::set<std::string> BackupJournal::leftOut() const {
    std::lock_guard lock(mutex_);
    return leftOut_;
}

}  // namespace quillbox
