#include "hostkit/folder_photo_library.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <tuple>
#include <utility>

#include "baseapi/transfer/local_file.h"
#include "hostkit/exif_date.h"
#include "hostkit/file_walk.h"
#include "hostkit/media_type.h"
#include "hostkit/picture_date.h"

namespace hostkit {

namespace fs = std::filesystem;
using baseapi::PhotoAsset;
using MediaType = PhotoAsset::MediaType;

namespace {

constexpr int denied = 2;

struct DatedFile {
    Instant date;
    std::string identifier;
};

/// Why a file is passed over.
struct Refused {
    std::string why;
};

[[noreturn]] void refuseWithError() {
    throw Refused{std::generic_category().message(errno)};
}

Instant modificationDate(const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) refuseWithError();
    if (!S_ISREG(status.st_mode)) throw Refused{"no regular file"};
    if (::faccessat(AT_FDCWD, file.c_str(), R_OK, AT_EACCESS) != 0) refuseWithError();
    return {std::chrono::sys_seconds(std::chrono::seconds(status.st_mtim.tv_sec)),
            std::chrono::nanoseconds(status.st_mtim.tv_nsec)};
}

Instant creationDate(const fs::path& file, MediaType mediaType) {
    const auto modified = modificationDate(file);
    return mediaType == MediaType::image ? pictureDate(file).value_or(modified) : modified;
}

/// Absent where the asset is none of this folder. The file may have gone since.
std::optional<fs::path> fileOf(const fs::path& folder, const PhotoAsset& asset) {
    const fs::path below(asset.localIdentifier);
    if (below.is_absolute() || std::ranges::find(below, "..") != below.end()) return std::nullopt;
    if (asset.mediaType == MediaType::unknown || mediaTypeOf(below.native()) != asset.mediaType)
        return std::nullopt;
    return folder / below;
}

std::optional<std::string> contentOf(const fs::path& file) try {
    std::string bytes(fs::file_size(file), '\0');
    bytes.resize(baseapi::LocalFile(file).read(bytes.data(), bytes.size()));
    return bytes;
} catch (const std::exception&) {
    return std::nullopt;
}

}  // namespace

FolderPhotoLibrary::FolderPhotoLibrary(fs::path folder, Warning warning)
    : folder_(std::move(folder)), warning_(std::move(warning)) {}

int FolderPhotoLibrary::authorizationStatus() {
    std::error_code error;
    const fs::directory_iterator listed(folder_, error);
    return error ? denied : authorized;
}

std::vector<PhotoAsset> FolderPhotoLibrary::fetchAssets(MediaType mediaType) {
    if (mediaType == MediaType::unknown) return {};
    std::vector<DatedFile> files;
    const auto rootLength = (folder_ / "").native().size();
    const auto add = [&](const fs::path& file) {
        if (mediaTypeOf(file.native()) != mediaType) return;
        try {
            files.push_back({creationDate(file, mediaType), file.native().substr(rootLength)});
        } catch (const Refused& refused) {
            warn(file, refused.why);
        }
    };
    walkFiles(folder_, {add, [this](const auto& path, const auto& why) { warn(path, why); }});
    std::ranges::sort(files, {}, [](const DatedFile& file) { return std::tie(file.date, file.identifier); });

    std::vector<PhotoAsset> assets;
    assets.reserve(files.size());
    for (auto& file : files) assets.push_back({std::move(file.identifier), mediaType});
    return assets;
}

std::optional<std::string> FolderPhotoLibrary::originalFilename(const PhotoAsset& asset) {
    const auto file = fileOf(folder_, asset);
    if (!file) return std::nullopt;
    return file->filename();
}

std::optional<std::int64_t> FolderPhotoLibrary::fileSize(const PhotoAsset& asset) {
    const auto file = fileOf(folder_, asset);
    std::error_code error;
    const auto size = file ? fs::file_size(*file, error) : 0;
    if (!file || error) return std::nullopt;
    return static_cast<std::int64_t>(size);
}

void FolderPhotoLibrary::requestImageData(const PhotoAsset& asset, const RequestOptions&,
                                          std::function<void(std::optional<std::string>)> answer) {
    const auto file = asset.mediaType == MediaType::image ? fileOf(folder_, asset) : std::nullopt;
    answer(file ? contentOf(*file) : std::nullopt);
}

void FolderPhotoLibrary::requestVideoFile(const PhotoAsset& asset, const RequestOptions&,
                                          std::function<void(std::optional<std::string>)> answer) {
    const auto file = asset.mediaType == MediaType::video ? fileOf(folder_, asset) : std::nullopt;
    answer(file ? std::optional<std::string>(*file) : std::nullopt);
}

void FolderPhotoLibrary::requestContentEditingInput(const PhotoAsset& asset, const ContentEditingOptions&,
                                                    std::function<void(ContentEditingAnswer)> answer) {
    const auto file = fileOf(folder_, asset);
    if (!file) return answer({std::nullopt, "no such asset: " + asset.localIdentifier});
    answer({ContentEditingInput{*file}, std::nullopt});
}

void FolderPhotoLibrary::warn(const fs::path& path, const std::string& why) const {
    if (warning_) warning_(path, why);
}

}  // namespace hostkit
