#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "baseapi/api/backup/records.h"
#include "baseapi/platform/http_transport.h"
#include "baseapi/platform/platform.h"
#include "cli/backup_journal.h"

namespace quillbox {

/// A transport that lets a backup be followed: each answer is handed on in the trail of the file that its
/// request was for.
class FollowedTransport final : public baseapi::HttpTransport {
  public:
    /// The service has named the scopes of the backup; the run has not yet heard of them.
    using Scopes = std::function<void(const std::vector<baseapi::ScopeDetail>&)>;

    FollowedTransport(std::shared_ptr<baseapi::HttpTransport> inner, std::shared_ptr<BackupJournal> journal)
        : inner_(std::move(inner)), journal_(std::move(journal)) {}

    /// May be absent. Before the first request.
    void setScopes(Scopes scopes) { scopes_ = std::move(scopes); }

    std::shared_ptr<baseapi::HttpTask> dataTask(baseapi::DataRequest request,
                                                std::function<void(baseapi::DataAnswer)> completion) override;
    std::shared_ptr<baseapi::HttpTask> uploadTask(
        baseapi::UploadRequest request, Progress progress,
        std::function<void(std::optional<baseapi::TransportError>)> completion) override;
    std::shared_ptr<baseapi::HttpTask> downloadTask(
        baseapi::DownloadRequest request, Progress progress,
        std::function<void(baseapi::DownloadAnswer)> completion) override;
    std::size_t running() const override { return inner_->running(); }

  private:
    enum class Aim { creation, completion, scopes, other };

    static Aim aimOf(const baseapi::DataRequest& request);
    std::shared_ptr<FileTrail> trailOf(Aim aim, const baseapi::DataRequest& request);
    void look(Aim aim, const std::shared_ptr<FileTrail>& trail, baseapi::DataAnswer& answer);

    const std::shared_ptr<baseapi::HttpTransport> inner_;
    const std::shared_ptr<BackupJournal> journal_;
    Scopes scopes_;
};

/// Puts such a transport in the place of the default one, and a queue that is followed around the delegate
/// queue, which must be there.
std::shared_ptr<FollowedTransport> followTransport(baseapi::Platform& platform,
                                                   std::shared_ptr<BackupJournal> journal);

}  // namespace quillbox
