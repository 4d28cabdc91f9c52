#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace baseapi::inline v1 {

/// Why a transfer ended without an answer, or with half of one.
struct TransportError {
    /// How it ended.
    enum class Kind { failed, timedOut, cancelled };

    Kind kind = Kind::failed;
    /// The cause in words, as "Could not resolve host: ...".
    std::string text;
};

/// A header of a request, as it stands on the wire.
struct HttpHeader {
    std::string name;
    std::string value;
};

/// A request whose answer is held in memory.
struct DataRequest {
    std::string url;
    std::string verb;
    std::vector<HttpHeader> headers;
    /// Sent as it is; absent sends none.
    std::optional<std::string> body;
    /// The longest time without any progress, connecting included.
    std::chrono::milliseconds idleTimeout{60'000};
};

/// How a `DataRequest` ended.
struct DataAnswer {
    std::optional<TransportError> error;
    /// Absent after an error, and where the answer is no HTTP.
    std::optional<int> status;
    /// Has room for the JSON reader behind its end.
    std::string body;
};

/// Bytes that are sent without being copied.
struct ByteBuffer {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
};

/// A PUT of bytes that lie in memory; the answer's status and body are not read.
struct UploadRequest {
    std::string url;
    std::vector<HttpHeader> headers;
    ByteBuffer data;
    std::chrono::milliseconds idleTimeout{60'000};
};

/// A GET into a file.
struct DownloadRequest {
    std::string url;
    /// The file that the bytes are appended to; it is made where it does not exist.
    std::filesystem::path partialFile;
    /// Sent as `If-Range` where bytes of `partialFile` are there already: the validator of the answer that
    /// they came from. Without it, or where the service does not continue, the file starts anew.
    std::optional<std::string> validator;
    std::chrono::milliseconds idleTimeout{30'000};
};

/// How a `DownloadRequest` ended.
struct DownloadAnswer {
    std::optional<TransportError> error;
    std::optional<int> status;
    /// The strong validator of the answer (ETag, or Last-Modified), with which a later request can continue.
    std::optional<std::string> validator;
};

/// One transfer. It has not begun before `resume()`, and keeps itself alive from then until its completion
/// has run. Callable from any thread.
class HttpTask {
  public:
    virtual ~HttpTask() = default;

    /// A number that no other task of this transport has.
    virtual std::int64_t identifier() const = 0;
    /// Begins the transfer and returns at once. Once is enough: a second call does nothing.
    virtual void resume() = 0;
    /// The completion still comes, with `TransportError::Kind::cancelled`, unless it is on its way already;
    /// also that of a task which has not begun.
    virtual void cancel() = 0;
};

/// The HTTP client that the library is lent. One attempt for each task, http and https alone, certificates
/// verified, redirects followed without `Authorization` to another host. Callbacks run on the delegate queue,
/// never on the thread that does the network's work and never inside a call of this interface; those of one
/// task run one after the other, its completion last and exactly once. An answer that ends inside its head or
/// before its announced length is an error. A header with a control character is an error, and nothing is
/// sent. Callable from any thread; a completion or a progress listener may be absent, and what either throws
/// goes no further.
class HttpTransport {
  public:
    /// Running totals of this transfer in bytes; `total` is -1 where it is not known.
    using Progress = std::function<void(std::int64_t done, std::int64_t total)>;

    virtual ~HttpTransport() = default;

    /// A transfer whose answer is held in memory.
    virtual std::shared_ptr<HttpTask> dataTask(DataRequest request,
                                               std::function<void(DataAnswer)> completion) = 0;
    /// A transfer that sends bytes.
    virtual std::shared_ptr<HttpTask> uploadTask(
        UploadRequest request, Progress progress,
        std::function<void(std::optional<TransportError>)> completion) = 0;
    /// A transfer into a file.
    virtual std::shared_ptr<HttpTask> downloadTask(DownloadRequest request, Progress progress,
                                                   std::function<void(DownloadAnswer)> completion) = 0;

    /// The number of transfers that have begun and not ended.
    virtual std::size_t running() const = 0;
};

}  // namespace baseapi::inline v1
