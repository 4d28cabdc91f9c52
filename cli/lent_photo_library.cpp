#include "cli/lent_photo_library.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <system_error>
#include <utility>

#include "hostkit/folder_photo_library.h"

namespace quillbox {
namespace {

using MediaType = baseapi::PhotoAsset::MediaType;

bool holdTheSame(const std::string& left, const std::string& right) {
    std::ifstream one(left, std::ios::binary);
    std::ifstream other(right, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return one && other && std::equal(Bytes(one), Bytes(), Bytes(other), Bytes());
}

}  // namespace

LentPhotoLibrary::LentPhotoLibrary(std::filesystem::path folder, std::shared_ptr<BackupJournal> journal,
                                   Output& output)
    : folder_(std::move(folder)),
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

std::vector<baseapi::PhotoAsset> LentPhotoLibrary::fetchAssets(MediaType mediaType) {
    auto assets = library_->fetchAssets(mediaType);
    const auto cloudPath =
        std::make_shared<const std::string>(mediaType == MediaType::video ? "/Videos" : "/Images");
    for (const auto& asset : assets)
        journal_->expect((folder_ / asset.localIdentifier).string(), fileSize(asset).value_or(0), cloudPath);
    return assets;
}

void LentPhotoLibrary::requestImageData(const baseapi::PhotoAsset& asset, const RequestOptions& options,
                                        std::function<void(std::optional<std::string>)> answer) {
    library_->requestImageData(
        asset, options, [&, answer = std::move(answer)](std::optional<std::string> bytes) {
            if (bytes) {
                std::lock_guard lock(mutex_);
                originals_.emplace(bytes->size(), (folder_ / asset.localIdentifier).string());
            }
            answer(std::move(bytes));
        });
}

void LentPhotoLibrary::requestVideoFile(const baseapi::PhotoAsset& asset, const RequestOptions& options,
                                        std::function<void(std::optional<std::string>)> answer) {
    library_->requestVideoFile(asset, options,
                               [this, answer = std::move(answer)](std::optional<std::string> path) {
                                   if (path) {
                                       std::lock_guard lock(mutex_);
                                       lentFiles_.insert(*path);
                                   }
                                   answer(std::move(path));
                               });
}

std::string LentPhotoLibrary::originalOf(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (error) return path;
    std::lock_guard lock(mutex_);
    if (lentFiles_.contains(path)) return path;
    const auto [begin, end] = originals_.equal_range(size);
    const bool isAlone = begin != end && std::next(begin) == end;
    const auto found = std::find_if(
        begin, end, [&](const auto& entry) { return isAlone || holdTheSame(entry.second, path); });
    if (found == end) return path;
    copies_.push_back(path);
    // Another picture of the same content has a copy of its own.
    auto original = std::move(found->second);
    originals_.erase(found);
    return original;
}

void LentPhotoLibrary::removeCopies() {
    std::lock_guard lock(mutex_);
    std::error_code ignored;
    for (const auto& copy : std::exchange(copies_, {})) std::filesystem::remove(copy, ignored);
}

}  // namespace quillbox
