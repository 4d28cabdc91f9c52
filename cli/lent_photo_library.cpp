#include "cli/lent_photo_library.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <functional>
#include <iterator>
#include <system_error>
#include <utility>

#include "hostkit/folder_photo_library.h"

namespace quillbox {
namespace {

using MediaType = baseapi::PhotoAsset::MediaType;

std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool holdTheSame(const std::string& left, const std::string& right) {
    std::ifstream one(left, std::ios::binary);
    std::ifstream other(right, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return one && other && std::equal(Bytes(one), Bytes(), Bytes(other), Bytes());
}

std::string whyUnreadable(const std::string& file) {
    errno = 0;
    const std::ifstream stream(file, std::ios::binary);
    return stream || errno == 0 ? "it cannot be read" : std::generic_category().message(errno);
}

bool hasRoomFor(const std::filesystem::path& folder, std::size_t bytes) {
    constexpr std::uintmax_t reserve = 16 << 20;
    std::error_code error;
    const auto space = std::filesystem::space(folder, error);
    return error || space.available >= bytes + reserve;
}

}  // namespace

LentPhotoLibrary::LentPhotoLibrary(std::filesystem::path folder, std::filesystem::path copies,
                                   std::shared_ptr<BackupJournal> journal, Output& output)
    : folder_(std::move(folder)),
      copies_(std::move(copies)),
      journal_(std::move(journal)),
      library_(std::make_unique<hostkit::FolderPhotoLibrary>(
          folder_, [this, &output](const auto& path, const std::string& why) { warn(output, path, why); })) {}

void LentPhotoLibrary::warn(Output& output, const std::filesystem::path& path, const std::string& why) {
    {
        std::lock_guard lock(mutex_);
        if (!warnedOf_.insert(path).second) return;
    }
    output.note("quillbox: warning: " + path.string() + " is passed over: " + why);
}

std::string LentPhotoLibrary::fileOf(const baseapi::PhotoAsset& asset) const {
    return (folder_ / asset.localIdentifier).string();
}

std::vector<baseapi::PhotoAsset> LentPhotoLibrary::fetchAssets(MediaType mediaType) {
    auto assets = library_->fetchAssets(mediaType);
    const auto cloudPath =
        std::make_shared<const std::string>(mediaType == MediaType::video ? "/Videos" : "/Images");
    for (const auto& asset : assets) journal_->expect(fileOf(asset), fileSize(asset).value_or(0), cloudPath);
    return assets;
}

void LentPhotoLibrary::requestImageData(const baseapi::PhotoAsset& asset, const RequestOptions& options,
                                        std::function<void(std::optional<std::string>)> answer) {
    const auto copy = [this, &answer](std::string bytes) {
        std::lock_guard lock(copying_);
        if (!closed_) answer(std::move(bytes));
    };
    if (stopped_) return copy({});
    library_->requestImageData(asset, options, [&](std::optional<std::string> bytes) {
        copy(copyOf(fileOf(asset), std::move(bytes)));
    });
}

/// The bytes of the copy; for a picture that is not to be sent a text that no other copy holds.
std::string LentPhotoLibrary::copyOf(const std::string& file, std::optional<std::string> bytes) {
    std::optional<std::string> obstacle;
    if (!bytes)
        obstacle = whyUnreadable(file);
    else if (!hasRoomFor(copies_, bytes->size()))
        obstacle = "there is no room for a copy of it in " + copies_.parent_path().string();
    if (obstacle) bytes = file;
    std::lock_guard lock(mutex_);
    originals_.emplace(bytes->size(), file);
    if (obstacle) obstacles_.emplace(file, std::move(*obstacle));
    return std::move(*bytes);
}

/// Of a video the library takes the file itself; one that is not there fails when it is hashed.
void LentPhotoLibrary::requestVideoFile(const baseapi::PhotoAsset& asset, const RequestOptions& options,
                                        std::function<void(std::optional<std::string>)> answer) {
    library_->requestVideoFile(asset, options, [&](const std::optional<std::string>& path) {
        answer(path.value_or(fileOf(asset)));
    });
}

BackupSlicer::Item LentPhotoLibrary::identify(const std::string& path) {
    if (std::filesystem::path(path).parent_path() != copies_) return {path, {}, {}};
    const std::shared_ptr<void> removal(nullptr, [path](void*) {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    });
    const auto original = originalOf(path);
    if (!original) return {path, {}, removal};
    return {*original, obstacleOf(*original), removal};
}

std::optional<std::string> LentPhotoLibrary::originalOf(const std::string& copy) {
    std::error_code error;
    const auto size = std::filesystem::file_size(copy, error);
    const auto candidates = ofSize(size);
    for (const auto& file : candidates) {
        const bool isAlone = candidates.size() == 1;
        const bool isStandIn = obstacleOf(file).has_value();
        if (!isAlone && (isStandIn ? contentOf(copy) != file : !holdTheSame(file, copy))) continue;
        // Another picture of the same content has a copy of its own.
        if (take(size, file)) return file;
    }
    return std::nullopt;
}

std::vector<std::string> LentPhotoLibrary::ofSize(std::uintmax_t size) {
    std::vector<std::string> files;
    std::lock_guard lock(mutex_);
    const auto [begin, end] = originals_.equal_range(size);
    for (auto place = begin; place != end; ++place) files.push_back(place->second);
    return files;
}

/// False where another thread has taken it.
bool LentPhotoLibrary::take(std::uintmax_t size, const std::string& file) {
    std::lock_guard lock(mutex_);
    const auto [begin, end] = originals_.equal_range(size);
    const auto found = std::find_if(begin, end, [&](const auto& entry) { return entry.second == file; });
    if (found == end) return false;
    originals_.erase(found);
    return true;
}

std::optional<std::string> LentPhotoLibrary::obstacleOf(const std::string& file) {
    std::lock_guard lock(mutex_);
    const auto found = obstacles_.find(file);
    if (found == obstacles_.end()) return std::nullopt;
    return found->second;
}

void LentPhotoLibrary::close() {
    std::lock_guard lock(copying_);
    closed_ = true;
}

}  // namespace quillbox
