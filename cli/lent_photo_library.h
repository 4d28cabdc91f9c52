#pragma once

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
#include "cli/output.h"

namespace quillbox {

/// The photo library that a command lends the library: a folder, whose assets the journal expects under their
/// files' names. The library backs a picture up from a copy; this class knows which picture a copy is of.
class LentPhotoLibrary final : public baseapi::PhotoLibrary {
  public:
    LentPhotoLibrary(std::filesystem::path folder, std::shared_ptr<BackupJournal> journal, Output& output);

    /// The asset's file of which the file at this path is a copy, or the path itself.
    std::string originalOf(const std::string& path);
    /// Removes the copies that have been asked for.
    void removeCopies();

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

    const std::filesystem::path folder_;
    const std::shared_ptr<BackupJournal> journal_;
    const std::unique_ptr<baseapi::PhotoLibrary> library_;
    std::mutex mutex_;
    /// Both kinds of asset are looked for in the same folders.
    std::set<std::filesystem::path> warnedOf_;
    /// Pictures that have been copied, by their size in bytes.
    std::multimap<std::uintmax_t, std::string> originals_;
    /// Files of the folder itself, which the library backs up from where they lie.
    std::set<std::string> lentFiles_;
    std::vector<std::string> copies_;
};

}  // namespace quillbox
