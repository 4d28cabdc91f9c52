#include "baseapi/platform/curl/upload_transfer.h"

#include <stdexcept>
#include <utility>

namespace baseapi::inline v1 {
namespace {

constexpr std::size_t kLargeUpload = 256 << 10;
/// Fits into a core's own cache, twice.
constexpr long kLargeBuffer = 128 << 10;
constexpr long kSmallBuffer = 64 << 10;

}  // namespace

UploadTransfer::UploadTransfer(std::shared_ptr<TransferLoop> loop, UploadRequest request,
                               HttpTransport::Progress progress,
                               std::function<void(std::optional<TransportError>)> completion)
    : Transfer(std::move(loop), Kind::upload, std::move(request.url), request.idleTimeout,
               std::move(progress)),
      data_(std::move(request.data)),
      completion_(std::move(completion)) {
    try {
        headers_.emplace(request.headers);
    } catch (const std::invalid_argument& error) {
        reject(error.what());
    }
}

void UploadTransfer::setUpHandle(EasyHandle& easy) const {
    Transfer::setUpHandle(easy);
    easy.set(CURLOPT_XFERINFOFUNCTION, &UploadTransfer::onProgress);
    // A PUT that is sent elsewhere stays one.
    easy.set(CURLOPT_POSTREDIR, static_cast<long>(CURL_REDIR_POST_301 | CURL_REDIR_POST_302));
}

void UploadTransfer::prepare(EasyHandle& easy) {
    easy.set(CURLOPT_HTTPHEADER, headers_->list());
    easy.set(CURLOPT_XFERINFODATA, this);
    // A small part goes out in one piece. That it has is told with its end: waking threads in between costs
    // more than sending it.
    easy.set(CURLOPT_NOPROGRESS, data_.size <= kSmallBuffer ? 1L : 0L);
    easy.set(CURLOPT_UPLOAD_BUFFERSIZE, data_.size >= kLargeUpload ? kLargeBuffer : kSmallBuffer);
    // As the body of a POST by another name: so a small part goes out in one piece with its head.
    easy.set(CURLOPT_POST, 1L);
    easy.set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(data_.size));
    easy.set(CURLOPT_POSTFIELDS, data_.data ? data_.data.get() : "");
    easy.set(CURLOPT_CUSTOMREQUEST, "PUT");
}

void UploadTransfer::followRedirect(int status) {
    if (status == 303) easy()->set(CURLOPT_CUSTOMREQUEST, static_cast<const char*>(nullptr));
}

int UploadTransfer::onProgress(void* transfer, curl_off_t, curl_off_t, curl_off_t, curl_off_t total) {
    static_cast<UploadTransfer*>(transfer)->reportSent(total);
    return 0;
}

void UploadTransfer::reportSent(curl_off_t total) {
    // A redirect counts from the start again; the totals never fall.
    if (total <= reported_) return;
    reported_ = total;
    report(total, static_cast<std::int64_t>(data_.size));
}

void UploadTransfer::settle(std::optional<TransportError> error) {
    reportSent(sent());
    data_ = {};
    error_ = std::move(error);
}

void UploadTransfer::complete() {
    const auto completion = std::exchange(completion_, nullptr);
    if (completion) completion(std::move(error_));
}

}  // namespace baseapi::inline v1
