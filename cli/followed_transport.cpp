#include "cli/followed_transport.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "baseapi/api/files/records.h"
#include "baseapi/json/codec.h"
#include "baseapi/platform/curl_transport.h"
#include "baseapi/platform/executor.h"

namespace quillbox {
namespace {

/// Absent where the text is no such record.
template <class Record>
std::optional<Record> decoded(std::string& text) {
    Record record;
    if (baseapi::decode(text, record)) return std::nullopt;
    return record;
}

/// Runs each job in the trail of the thread that has posted it: the library sends its requests from here.
class FollowedQueue final : public baseapi::Executor {
  public:
    explicit FollowedQueue(std::shared_ptr<baseapi::Executor> inner) : inner_(std::move(inner)) {}

    void post(std::function<void()> job) override {
        inner_->post([trail = FileTrail::ofThread(), job = std::move(job)]() mutable {
            const FileTrail::Scope scope(std::move(trail));
            job();
        });
        FileTrail::leaveThread();
    }

  private:
    const std::shared_ptr<baseapi::Executor> inner_;
};

/// A part on its way; its callbacks come one after the other.
struct Part {
    std::shared_ptr<FileTrail> trail;
    std::int64_t sent = 0;
};

}  // namespace

FollowedTransport::Aim FollowedTransport::aimOf(const baseapi::DataRequest& request) {
    const std::string_view path = std::string_view(request.url).substr(0, request.url.find('?'));
    if (path.ends_with("/files/create")) return Aim::creation;
    if (path.ends_with("/files/complete")) return Aim::completion;
    if (request.verb == "GET" && path.ends_with("/scope")) return Aim::scopes;
    return Aim::other;
}

/// A file is created on the thread that has begun with it; it is completed on any.
std::shared_ptr<FileTrail> FollowedTransport::trailOf(Aim aim, const baseapi::DataRequest& request) {
    if (aim != Aim::completion || !request.body) return FileTrail::ofThread();
    auto body = *request.body;
    const auto bean = decoded<baseapi::FilesCompleteBean>(body);
    return bean && bean->fileId ? journal_->trailOfId(*bean->fileId) : nullptr;
}

void FollowedTransport::look(Aim aim, const std::shared_ptr<FileTrail>& trail, baseapi::DataAnswer& answer) {
    if (aim == Aim::creation && trail) {
        if (const auto response = decoded<baseapi::FilesCreateResponse>(answer.body))
            journal_->created(trail, *response);
    } else if (aim == Aim::scopes && scopes_) {
        const auto response = decoded<baseapi::GetScopeResponse>(answer.body);
        if (response && response->code == 0) scopes_(response->scopeList);
    }
}

std::shared_ptr<baseapi::HttpTask> FollowedTransport::dataTask(
    baseapi::DataRequest request, std::function<void(baseapi::DataAnswer)> completion) {
    const auto aim = aimOf(request);
    auto trail = trailOf(aim, request);
    return inner_->dataTask(std::move(request),
                            [this, aim, trail = std::move(trail),
                             completion = std::move(completion)](baseapi::DataAnswer answer) mutable {
                                look(aim, trail, answer);
                                const FileTrail::Scope scope(std::move(trail));
                                if (completion) completion(std::move(answer));
                            });
}

std::shared_ptr<baseapi::HttpTask> FollowedTransport::uploadTask(
    baseapi::UploadRequest request, Progress progress,
    std::function<void(std::optional<baseapi::TransportError>)> completion) {
    auto trail = journal_->trailOfPart(request.url);
    if (!trail) return inner_->uploadTask(std::move(request), std::move(progress), std::move(completion));
    const auto part = std::make_shared<Part>(Part{std::move(trail)});
    return inner_->uploadTask(
        std::move(request),
        [this, part, progress = std::move(progress)](std::int64_t done, std::int64_t total) {
            journal_->moved(*part->trail, done - std::exchange(part->sent, done));
            if (progress) progress(done, total);
        },
        [this, part, completion = std::move(completion)](std::optional<baseapi::TransportError> error) {
            if (error) {
                part->trail->cause.say("a part could not be sent: " + error->text);
                journal_->moved(*part->trail, -part->sent);
            }
            if (completion) completion(std::move(error));
        });
}

std::shared_ptr<baseapi::HttpTask> FollowedTransport::downloadTask(
    baseapi::DownloadRequest request, Progress progress,
    std::function<void(baseapi::DownloadAnswer)> completion) {
    return inner_->downloadTask(std::move(request), std::move(progress), std::move(completion));
}

std::shared_ptr<FollowedTransport> followTransport(baseapi::Platform& platform,
                                                   std::shared_ptr<BackupJournal> journal) {
    const auto queue = std::make_shared<FollowedQueue>(platform.delegateQueue);
    auto transport = std::make_shared<FollowedTransport>(
        std::make_shared<baseapi::CurlTransport>(
            queue, baseapi::CurlTransport::Options{.caBundle = platform.caBundle}),
        std::move(journal));
    platform.delegateQueue = queue;
    platform.http = transport;
    return transport;
}

}  // namespace quillbox
