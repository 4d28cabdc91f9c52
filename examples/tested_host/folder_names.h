#pragma once

#include <functional>
#include <string>
#include <vector>

#include "baseapi/baseapi.h"

/// The names of what is in a folder of the drive; what a host's own class may look like.
class FolderNames {
  public:
    struct Listing {
        std::vector<std::string> names;
        /// Empty where the service has answered; otherwise words for the user.
        std::string problem;
    };

    /// The seam: the application gives `CloudInstance::shared().getFileImpl()`, a test gives a double.
    explicit FolderNames(baseapi::IFile& files) : files_(files) {}

    /// Calls `done` once. A refusal is told; any other failure is tried a second time.
    void list(std::string folder, std::function<void(Listing)> done) {
        list(std::move(folder), std::move(done), 2);
    }

  private:
    void list(std::string folder, std::function<void(Listing)> done, int attempts) {
        const baseapi::FilesListBean request{.type = "list", .parentFileId = folder};
        files_.filesList(request, [this, folder, done, attempts](const auto& result) {
            result.visit(
                [&](const baseapi::NetworkResult<baseapi::FilesListResponse>::success& it) {
                    done({namesIn(it.record), ""});
                },
                [&](const baseapi::NetworkFailure& it) {
                    if (it.code == refused) return done({{}, "This folder is not yours."});
                    if (attempts == 1) return done({{}, "The drive cannot be reached."});
                    list(folder, done, attempts - 1);
                });
        });
    }

    static std::vector<std::string> namesIn(const baseapi::FilesListResponse& response) {
        std::vector<std::string> names;
        for (const auto& file : response.files.value_or(std::vector<baseapi::FileListMetadata>{}))
            names.push_back(file.fileName.value_or("?"));
        return names;
    }

    static constexpr std::int64_t refused = 13000403;

    baseapi::IFile& files_;
};
