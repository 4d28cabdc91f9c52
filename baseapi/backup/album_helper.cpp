#include "baseapi/backup/album_helper.h"

#include <fstream>
#include <system_error>
#include <utility>

#include "baseapi/backup/timed_answer.h"
#include "baseapi/core/log.h"
#include "baseapi/platform/platform.h"
#include "baseapi/platform/uuid.h"

namespace baseapi::inline v1 {
namespace {

using MediaType = PhotoAsset::MediaType;

std::optional<URL> fileURL(const std::optional<std::string>& path) {
    if (!path) return std::nullopt;
    return URL::file(*path);
}

/// Absent where the bytes could not be written.
std::optional<URL> writtenToTemporaryFile(const std::string& bytes) {
    const auto path = platform().temporaryFolder / (randomUuid() + ".jpg");
    errno = 0;
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file) return URL::file(path);
    logLine("写入临时文件失败: ", std::generic_category().message(errno));
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    return std::nullopt;
}

void videoURL(const PhotoAsset& asset, const PhotoLibrary::RequestOptions& options,
              AlbumHelper::URLCompletion completion) {
    platform().photoLibrary->requestVideoFile(
        asset, options,
        [completion = std::move(completion)](const auto& path) { completion(fileURL(path)); });
}

}  // namespace

bool AlbumHelper::checkPhotoLibraryPermission() {
    const int status = platform().photoLibrary->authorizationStatus();
    return status == PhotoLibrary::authorized || status == PhotoLibrary::limited;
}

bool AlbumHelper::hasContactsPermission() {
    return platform().addressBook->authorizationStatus() == AddressBook::AuthorizationStatus::authorized;
}

MediaAssets AlbumHelper::fetchAllMediaAssets() {
    auto& library = *platform().photoLibrary;
    return {library.fetchAssets(MediaType::image), library.fetchAssets(MediaType::video)};
}

std::string AlbumHelper::getOriginalFileName(const PhotoAsset& asset) {
    return platform().photoLibrary->originalFilename(asset).value_or("unknown");
}

std::int64_t AlbumHelper::getFileSize(const PhotoAsset& asset) {
    return platform().photoLibrary->fileSize(asset).value_or(0);
}

void AlbumHelper::getAssetURL(const PhotoAsset& asset, URLCompletion completion) {
    switch (asset.mediaType) {
        case MediaType::image:
            return platform().photoLibrary->requestContentEditingInput(
                asset, {}, [completion = std::move(completion)](const auto& answer) {
                    completion(answer.input ? fileURL(answer.input->fullSizeImagePath) : std::nullopt);
                });
        case MediaType::video:
            return videoURL(asset, {.networkAccessAllowed = true}, std::move(completion));
        case MediaType::unknown:
            return completion(std::nullopt);
    }
}

void AlbumHelper::getSimulatorFriendlyAssetURL(const PhotoAsset& asset, URLCompletion completion) {
    switch (asset.mediaType) {
        case MediaType::image:
            return platform().photoLibrary->requestImageData(
                asset, {.networkAccessAllowed = true, .version = 2},
                [completion = std::move(completion)](const auto& bytes) {
                    completion(bytes ? writtenToTemporaryFile(*bytes) : std::nullopt);
                });
        case MediaType::video:
            return videoURL(asset, {.networkAccessAllowed = true, .version = 1}, std::move(completion));
        case MediaType::unknown:
            return completion(std::nullopt);
    }
}

BackupFileInfo AlbumHelper::getBackupFileInfo(const PhotoAsset& asset) {
    BackupFileInfo info{std::nullopt, getOriginalFileName(asset), getFileSize(asset)};
    const auto answer = timedAnswer<std::optional<URL>>(std::chrono::seconds(3), [&](auto answered) {
        getSimulatorFriendlyAssetURL(asset, std::move(answered));
    });
    if (answer)
        info.url = *answer;
    else
        logLine("get url overTime");
    return info;
}

}  // namespace baseapi::inline v1
