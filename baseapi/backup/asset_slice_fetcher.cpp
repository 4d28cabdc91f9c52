#include "baseapi/backup/asset_slice_fetcher.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "baseapi/core/log.h"
#include "baseapi/platform/memory_size.h"
#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {
namespace {

namespace fs = std::filesystem;
using Completion = AssetSliceFetcher::Completion;
using MediaType = PhotoAsset::MediaType;

struct SliceFailure {
    AssetSliceError error;
};

[[noreturn]] void fail(std::int64_t code, std::string message) {
    throw SliceFailure{{"AssetSliceError", code, std::move(message)}};
}

AssetSliceError systemError(int error) {
    const auto& category = std::generic_category();
    return {category.name(), error, category.message(error)};
}

[[noreturn]] void failWith(int error) {
    throw SliceFailure{systemError(error)};
}

/// A file that is closed at the end of its life.
class OpenFile {
  public:
    explicit OpenFile(const fs::path& path) : descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (descriptor_ < 0) failWith(errno);
    }
    ~OpenFile() { ::close(descriptor_); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    /// Fewer bytes where the file has become shorter meanwhile.
    std::string read(std::uint64_t offset, std::uint64_t count) const {
        std::string bytes(memorySize(count), '\0');
        std::size_t filled = 0;
        while (filled < bytes.size()) {
            const auto got = ::pread(descriptor_, bytes.data() + filled, bytes.size() - filled,
                                     static_cast<off_t>(offset + filled));
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) failWith(errno);
            if (got == 0) break;
            filled += static_cast<std::size_t>(got);
        }
        bytes.resize(filled);
        return bytes;
    }

  private:
    const int descriptor_;
};

/// The file behind the asset; absent where there is none.
std::optional<fs::path> resolve(const PhotoAsset& asset, const PhotoLibrary::ContentEditingAnswer& answer) {
    if (answer.error) {
        logLine("获取URL失败: ", *answer.error);
        return std::nullopt;
    }
    if (!answer.input || !answer.input->fullSizeImagePath) return std::nullopt;
    fs::path path(*answer.input->fullSizeImagePath);
    if (asset.mediaType == MediaType::unknown) return std::nullopt;
    if (asset.mediaType == MediaType::video) path.replace_extension("mov");
    std::error_code ignored;
    return fs::exists(path, ignored) ? std::optional(path) : std::nullopt;
}

std::string readSlice(const std::optional<fs::path>& path, std::uint64_t offset, std::uint64_t size) {
    if (!path) fail(1, "无法获取资源URL");
    struct stat status {};
    if (::stat(path->c_str(), &status) != 0) {
        if (errno == ENOENT) fail(2, "文件不存在");
        failWith(errno);
    }
    if (!S_ISREG(status.st_mode) || status.st_size < 0) fail(3, "无法获取文件大小");
    const auto fileSize = static_cast<std::uint64_t>(status.st_size);
    if (fileSize <= offset) fail(4, "偏移量超出文件大小");
    return OpenFile(*path).read(offset, std::min(fileSize - offset, size));
}

}  // namespace

void AssetSliceFetcher::getAssetSlice(const PhotoAsset& asset, std::uint64_t offset, std::uint64_t size,
                                      Completion completion) {
    platform().photoLibrary->requestContentEditingInput(
        asset, {.canHandleAdjustmentData = true, .networkAccessAllowed = true},
        [asset, offset, size, completion = std::move(completion)](const auto& answer) {
            std::optional<std::string> bytes;
            std::optional<AssetSliceError> error;
            try {
                bytes = readSlice(resolve(asset, answer), offset, size);
            } catch (const SliceFailure& failure) {
                error = failure.error;
            } catch (const std::bad_alloc&) {
                error = systemError(ENOMEM);
            }
            completion(std::move(bytes), std::move(error));
        });
}

}  // namespace baseapi::inline v1
