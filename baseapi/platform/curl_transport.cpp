#include "baseapi/platform/curl_transport.h"

#include <utility>

#include "baseapi/platform/curl/data_transfer.h"
#include "baseapi/platform/curl/download_transfer.h"
#include "baseapi/platform/curl/transfer_loop.h"
#include "baseapi/platform/curl/upload_transfer.h"
#include "baseapi/platform/thread.h"

namespace baseapi::inline v1 {

CurlTransport::CurlTransport(std::shared_ptr<Executor> delegateQueue)
    : CurlTransport(std::move(delegateQueue), Options{}) {}

CurlTransport::CurlTransport(std::shared_ptr<Executor> delegateQueue, Options options)
    : options_(std::move(options)),
      loop_(std::make_shared<TransferLoop>(std::move(delegateQueue), options_.caBundle,
                                           options_.transfersPerOrigin)),
      thread_(startThread("baseapi-network", [loop = loop_] { loop->run(); })) {}

CurlTransport::~CurlTransport() {
    loop_->stop();
    thread_.join();
}

std::shared_ptr<HttpTask> CurlTransport::dataTask(DataRequest request,
                                                  std::function<void(DataAnswer)> completion) {
    return std::make_shared<DataTransfer>(loop_, std::move(request), std::move(completion),
                                          options_.longestBody);
}

std::shared_ptr<HttpTask> CurlTransport::uploadTask(
    UploadRequest request, Progress progress, std::function<void(std::optional<TransportError>)> completion) {
    return std::make_shared<UploadTransfer>(loop_, std::move(request), std::move(progress),
                                            std::move(completion));
}

std::shared_ptr<HttpTask> CurlTransport::downloadTask(DownloadRequest request, Progress progress,
                                                      std::function<void(DownloadAnswer)> completion) {
    return std::make_shared<DownloadTransfer>(loop_, std::move(request), std::move(progress),
                                              std::move(completion));
}

std::size_t CurlTransport::running() const {
    return loop_->running();
}

}  // namespace baseapi::inline v1
