#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "baseapi/platform/photo_library.h"
#include "cli/backup_journal.h"
#include "cli/backup_slicer.h"
#include "cli/output.h"

namespace quillbox {

/// The photo library that a command lends the library: a folder, whose assets the journal expects under their
/// files' names. The library backs a picture up from a copy; this class knows which picture a copy is of. An
/// asset without a file would end the process, so one that cannot be read has a copy that is never sent.
class LentPhotoLibrary final : public baseapi::PhotoLibrary {
  public:
    /// `copies`: the folder that the library writes its copies to, and nothing else does.
    LentPhotoLibrary(std::filesystem::path folder, std::filesystem::path copies,
                     std::shared_ptr<BackupJournal> journal, Output& output);

    /// What the file at a path is: a copy of an asset, or the asset itself.
    BackupSlicer::Item identify(const std::string& path);
    /// From now on nothing is read any more: each picture has an empty copy.
    void stop() { stopped_ = true; }
    /// From now on nothing is copied. To be called before the folder of the copies goes.
    void close();

    int authorizationStatus() override { return library_->authorizationStatus(); }
    std::vector<baseapi::PhotoAsset> fetchAssets(baseapi::PhotoAsset::MediaType mediaType) override;
    std::optional<std::string> originalFilename(const baseapi::PhotoAsset& asset) override {
        return library_->originalFilename(asset);
    }
    std::optional<std::int64_t> fileSize(const baseapi::PhotoAsset& asset) override {
        return library_->fileSize(asset);
    }
    void requestImageData(const baseapi::PhotoAsset& asset, const RequestOptions& options,
                          std::function<void(std::optional<std::string>)> answer) override;
    void requestVideoFile(const baseapi::PhotoAsset& asset, const RequestOptions& options,
                          std::function<void(std::optional<std::string>)> answer) override;
    void requestContentEditingInput(const baseapi::PhotoAsset& asset, const ContentEditingOptions& options,
                                    std::function<void(ContentEditingAnswer)> answer) override {
        library_->requestContentEditingInput(asset, options, std::move(answer));
    }

  private:
    void warn(Output& output, const std::filesystem::path& path, const std::string& why);
    std::string fileOf(const baseapi::PhotoAsset& asset) const;
    std::string copyOf(const std::string& file, std::optional<std::string> bytes);
    std::vector<std::string> ofSize(std::uintmax_t size);
    bool take(std::uintmax_t size, const std::string& file);
    std::optional<std::string> originalOf(const std::string& copy);
    std::optional<std::string> obstacleOf(const std::string& file);

    const std::filesystem::path folder_;
    const std::filesystem::path copies_;
    const std::shared_ptr<BackupJournal> journal_;
    const std::unique_ptr<baseapi::PhotoLibrary> library_;
    std::atomic<bool> stopped_ = false;
    /// Held while the library writes a copy.
    std::mutex copying_;
    bool closed_ = false;

    std::mutex mutex_;
    /// Both kinds of asset are looked for in the same folders.
    std::set<std::filesystem::path> warnedOf_;
    /// Pictures that have been copied, by their copy's size in bytes.
    std::multimap<std::uintmax_t, std::string> originals_;
    /// Why a picture is not to be sent.
    std::map<std::string, std::string> obstacles_;
};

}  // namespace quillbox
