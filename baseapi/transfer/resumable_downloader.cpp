#include "baseapi/transfer/resumable_downloader.h"

#include <system_error>
#include <utility>
#include <variant>

#include "baseapi/core/callback.h"
#include "baseapi/core/log.h"
#include "baseapi/core/main_queue.h"
#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {
namespace fs = std::filesystem;
namespace {

/// The rest can be asked for where something has arrived whose version is known.
std::optional<ResumeData> resumeDataOf(const std::shared_ptr<const TemporaryFile>& file,
                                       const DownloadAnswer& answer) {
    std::error_code error;
    const auto size = fs::file_size(file->path(), error);
    if (answer.error->kind != TransportError::Kind::cancelled || !answer.validator || error || size == 0)
        return std::nullopt;
    return ResumeData{file, *answer.validator};
}

}  // namespace

ResumableDownloader::ResumableDownloader(URL target, URL destination, std::string identifier)
    : targetURL(std::move(target)),
      destinationURL(std::move(destination)),
      sessionIdentifier(std::move(identifier)) {}

void ResumableDownloader::start(DownloadProgress progress, DownloadCompletion completion) try {
    std::lock_guard lock(mutex_);
    if (currentState_ == DownloadState::downloading) return;
    auto attempt = std::make_shared<Attempt>(Attempt{std::move(progress), std::move(completion), nullptr});
    attempt_ = attempt;
    currentState_ = DownloadState::downloading;
    std::optional<std::string> validator;
    if (resumeData_) {
        logLine("Continue downloading from the resume point: ", targetURL.lastPathComponent());
        attempt->file = resumeData_->partialFile;
        validator = resumeData_->validator;
    } else {
        logLine("Start downloading new tasks: ", targetURL.text());
        attempt->file = std::make_shared<TemporaryFile>(platform().temporaryFolder);
    }
    downloadTask_ = makeTask(attempt, std::move(validator));
    downloadTask_->resume();
} catch (const std::system_error& error) {
    onMainQueue([self = shared_from_this(), failure = DownloadError{.text = error.what()}] {
        self->completeTransfer(nullptr, failure);
    });
}

void ResumableDownloader::cancel() {
    std::lock_guard lock(mutex_);
    if (downloadTask_) downloadTask_->cancel();
    resumeData_.reset();
    currentState_ = DownloadState::idle;
}

DownloadState ResumableDownloader::currentState() const {
    std::lock_guard lock(mutex_);
    return currentState_;
}

bool ResumableDownloader::hasResumeData() const {
    std::lock_guard lock(mutex_);
    return resumeData_.has_value();
}

std::shared_ptr<HttpTask> ResumableDownloader::makeTask(const AttemptPointer& attempt,
                                                        std::optional<std::string> validator) {
    DownloadRequest request;
    request.url = targetURL.text();
    request.partialFile = attempt->file->path();
    request.validator = std::move(validator);
    return platform().http->downloadTask(
        std::move(request),
        [self = shared_from_this(), attempt](std::int64_t done, std::int64_t total) {
            if (self->currentAttempt() == attempt) self->didWriteData(done, total);
        },
        [self = shared_from_this(), attempt](const DownloadAnswer& answer) {
            self->taskEnded(attempt, answer);
        });
}

/// The file is kept until the main queue has moved it; one that is of no use goes before its end is told.
void ResumableDownloader::taskEnded(const AttemptPointer& attempt, const DownloadAnswer& answer) {
    auto file = std::exchange(attempt->file, nullptr);
    std::optional<DownloadError> error;
    if (answer.error) {
        error = {answer.error->kind, answer.error->text, resumeDataOf(file, answer)};
        file.reset();
    }
    onMainQueue([self = shared_from_this(), attempt, file = std::move(file), error]() mutable {
        self->keepResumeData(attempt, error);
        self->deliverEnd(attempt->completionHandler, std::move(file), error);
    });
}

/// What a cancel cut off, unless another start has followed.
void ResumableDownloader::keepResumeData(const AttemptPointer& attempt,
                                         const std::optional<DownloadError>& error) {
    std::lock_guard lock(mutex_);
    if (attempt_ != attempt) return;
    resumeData_ = error ? error->resumeData : std::nullopt;
}

void ResumableDownloader::completeTransfer(std::shared_ptr<const TemporaryFile> temporaryFile,
                                           const std::optional<DownloadError>& error) {
    const auto attempt = currentAttempt();
    deliverEnd(attempt ? attempt->completionHandler : nullptr, std::move(temporaryFile), error);
}

void ResumableDownloader::deliverEnd(const DownloadCompletion& handler,
                                     std::shared_ptr<const TemporaryFile> temporaryFile,
                                     const std::optional<DownloadError>& error) const {
    if (error) {
        logLine("down file error = ", error->text);
        invokeCallback(handler, DownloadResult{DownloadResult::failure{error->text}});
    }
    if (!temporaryFile) return;
    logLine("===moveTempFile=== ", temporaryFile->path().native());
    const auto result = moveToDestination(temporaryFile->path());
    temporaryFile.reset();  // nothing is left of it when the host hears of the end
    if (const auto* failure = std::get_if<DownloadResult::failure>(&result.value))
        logLine("move file error = ", failure->message);
    invokeCallback(handler, result);
}

void ResumableDownloader::didWriteData(std::int64_t totalBytesWritten,
                                       std::int64_t totalBytesExpectedToWrite) {
    const double fraction =
        static_cast<double>(totalBytesWritten) / static_cast<double>(totalBytesExpectedToWrite);
    logLine("download didWriteData");
    logLine("download progress ", fraction);
    if (const auto attempt = currentAttempt()) invokeCallback(attempt->progressHandler, fraction);
}

void ResumableDownloader::didFinishDownloading(const fs::path& temporaryFile) {
    logLine("download didFinishDownloadingTo");
    const auto result = moveToDestination(temporaryFile);
    const bool moved = std::holds_alternative<DownloadResult::success>(result.value);
    setState(moved ? DownloadState::completed : DownloadState::failed);
    if (const auto attempt = currentAttempt()) invokeCallback(attempt->completionHandler, result);
}

void ResumableDownloader::didComplete(const std::optional<DownloadError>& error) {
    logLine("download didCompleteWithError");
    if (!error) return;
    if (error->kind == TransportError::Kind::cancelled && error->resumeData) {
        std::lock_guard lock(mutex_);
        resumeData_ = error->resumeData;
        return;
    }
    setState(DownloadState::failed);
    if (const auto attempt = currentAttempt())
        invokeCallback(attempt->completionHandler, DownloadResult{DownloadResult::failure{error->text}});
}

DownloadResult ResumableDownloader::moveToDestination(const fs::path& temporaryFile) const {
    try {
        moveIntoPlace(temporaryFile, destinationURL.path());
        return {DownloadResult::success{destinationURL}};
    } catch (const std::system_error& error) {
        return {DownloadResult::failure{error.what()}};
    }
}

ResumableDownloader::AttemptPointer ResumableDownloader::currentAttempt() const {
    std::lock_guard lock(mutex_);
    return attempt_;
}

void ResumableDownloader::setState(DownloadState state) {
    std::lock_guard lock(mutex_);
    currentState_ = state;
}

}  // namespace baseapi::inline v1
