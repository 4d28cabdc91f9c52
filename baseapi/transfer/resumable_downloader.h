#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "baseapi/core/cancelable.h"
#include "baseapi/core/url.h"
#include "baseapi/platform/http_transport.h"
#include "baseapi/transfer/download_result.h"
#include "baseapi/transfer/temporary_file.h"

namespace baseapi::inline v1 {

enum class DownloadState { idle, downloading, paused, failed, completed };

/// What a transfer that was cut off left behind: a start with it asks for the rest alone. The partial file is
/// gone when nobody holds this any more.
struct ResumeData {
    std::shared_ptr<const TemporaryFile> partialFile;
    /// The validator of the answer that the bytes came from.
    std::string validator;
};

/// Why a transfer broke.
struct DownloadError {
    TransportError::Kind kind = TransportError::Kind::failed;
    std::string text;
    /// There where the rest can be asked for.
    std::optional<ResumeData> resumeData;
};

/// Fetches one address into one local file, by way of a temporary file. A start after a cancel that cut the
/// transfer off goes on where it stopped, where the service can do that; that memory lasts as long as the
/// object. Made as a shared object; while a transfer runs it keeps itself alive.
class ResumableDownloader final : public Cancelable,
                                  public std::enable_shared_from_this<ResumableDownloader> {
  public:
    ResumableDownloader(URL target, URL destination, std::string identifier);

    const URL targetURL;
    const URL destinationURL;
    /// Kept only.
    const std::string sessionIdentifier;

    /// Starts the transfer and returns; does nothing, and drops the handlers, while the state is
    /// `downloading`. The end comes through `completion`; it leaves the state as it is, so that another start
    /// needs a `cancel` first.
    void start(DownloadProgress progress, DownloadCompletion completion);

    /// Stops the transfer, forgets what could be continued, and makes the object idle. The transfer that is
    /// cut off by this still ends: its completion gets a failure, and what has arrived is kept for another
    /// start.
    void cancel() override;

    DownloadState currentState() const;
    bool hasResumeData() const;

    // What the transport reports of a transfer without a completion handler; of one with, the progress alone.

    /// On the delegate queue; hands the share of the whole to the progress handler, whatever the division
    /// gives.
    void didWriteData(std::int64_t totalBytesWritten, std::int64_t totalBytesExpectedToWrite);
    /// Moves the file to its place: state `completed` and a success, or `failed` and a failure.
    void didFinishDownloading(const std::filesystem::path& temporaryFile);
    /// Nothing without an error. A cancelled transfer's resume data are kept and nothing is delivered; any
    /// other error gives state `failed` and a failure.
    void didComplete(const std::optional<DownloadError>& error);

    /// What happens on the main queue at the end of a transfer with a completion handler. An error beside a
    /// file gives the failure, and then the end of the move as well. Either may be absent.
    void completeTransfer(std::shared_ptr<const TemporaryFile> temporaryFile,
                          const std::optional<DownloadError>& error);

  private:
    /// One start, with its handlers, and its file while the transfer runs.
    struct Attempt {
        DownloadProgress progressHandler;
        DownloadCompletion completionHandler;
        std::shared_ptr<const TemporaryFile> file;
    };
    using AttemptPointer = std::shared_ptr<Attempt>;

    std::shared_ptr<HttpTask> makeTask(const AttemptPointer& attempt, std::optional<std::string> validator);
    void taskEnded(const AttemptPointer& attempt, const DownloadAnswer& answer);
    void keepResumeData(const AttemptPointer& attempt, const std::optional<DownloadError>& error);
    void deliverEnd(const DownloadCompletion& handler, std::shared_ptr<const TemporaryFile> temporaryFile,
                    const std::optional<DownloadError>& error) const;
    DownloadResult moveToDestination(const std::filesystem::path& temporaryFile) const;
    AttemptPointer currentAttempt() const;
    void setState(DownloadState state);

    mutable std::mutex mutex_;
    DownloadState currentState_ = DownloadState::idle;
    std::shared_ptr<HttpTask> downloadTask_;
    std::optional<ResumeData> resumeData_;
    AttemptPointer attempt_;
};

}  // namespace baseapi::inline v1
