#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <thread>

#include "baseapi/platform/executor.h"
#include "baseapi/platform/http_transport.h"

namespace baseapi::inline v1 {

class TransferLoop;

/// HTTP on libcurl: one network thread waits for all transfers, callbacks run on the delegate queue. Proxies
/// are taken from the environment.
class CurlTransport final : public HttpTransport {
  public:
    struct Options {
        /// Certificates to trust in place of the system's.
        std::filesystem::path caBundle;
        /// Transfers to one scheme, host and port that run at the same time, and so the connections to it;
        /// the rest wait their turn, and their time-out does not run yet.
        std::size_t transfersPerOrigin = 64;
        /// The longest body of a `dataTask`'s answer; a longer one is an error.
        std::size_t longestBody = std::size_t{512} << 20;
    };

    explicit CurlTransport(std::shared_ptr<Executor> delegateQueue);
    CurlTransport(std::shared_ptr<Executor> delegateQueue, Options options);
    /// Ends what is running as cancelled.
    ~CurlTransport() override;
    CurlTransport(const CurlTransport&) = delete;
    CurlTransport& operator=(const CurlTransport&) = delete;

    std::shared_ptr<HttpTask> dataTask(DataRequest request,
                                       std::function<void(DataAnswer)> completion) override;
    std::shared_ptr<HttpTask> uploadTask(
        UploadRequest request, Progress progress,
        std::function<void(std::optional<TransportError>)> completion) override;
    std::shared_ptr<HttpTask> downloadTask(DownloadRequest request, Progress progress,
                                           std::function<void(DownloadAnswer)> completion) override;
    std::size_t running() const override;

  private:
    const Options options_;
    const std::shared_ptr<TransferLoop> loop_;
    std::thread thread_;
};

}  // namespace baseapi::inline v1
