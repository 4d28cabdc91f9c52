#include "baseapi/platform/curl/download_transfer.h"

#include <ctime>
#include <stdexcept>
#include <utility>

#include "baseapi/platform/curl/content_range.h"

namespace baseapi::inline v1 {
namespace {

constexpr long kBufferSize = 512 << 10;
constexpr int kPartialContent = 206;
constexpr int kRangeNotSatisfiable = 416;

}  // namespace

DownloadTransfer::DownloadTransfer(std::shared_ptr<TransferLoop> loop, DownloadRequest request,
                                   HttpTransport::Progress progress,
                                   std::function<void(DownloadAnswer)> completion)
    : Transfer(std::move(loop), Kind::download, std::move(request.url), request.idleTimeout,
               std::move(progress)),
      path_(std::move(request.partialFile)),
      completion_(std::move(completion)) {
    answer_.validator = std::move(request.validator);
}

void DownloadTransfer::setUpHandle(EasyHandle& easy) const {
    Transfer::setUpHandle(easy);
    easy.set(CURLOPT_BUFFERSIZE, kBufferSize);
    easy.set(CURLOPT_NOPROGRESS, 1L);
}

void DownloadTransfer::prepare(EasyHandle& easy) {
    file_.open(path_);
    if (file_.size() == 0) answer_.validator.reset();
    headers_.emplace(std::vector<HttpHeader>{{"Accept-Encoding", "identity"}});
    if (continues()) {
        headers_->add("Range", "bytes=" + std::to_string(file_.size()) + "-");
        headers_->add("If-Range", *answer_.validator);
    }
    easy.set(CURLOPT_HTTPHEADER, headers_->list());
    easy.set(CURLOPT_HTTPGET, 1L);
}

/// Decides, once the answer's head is there, what becomes of the bytes that are in the file.
void DownloadTransfer::accept() {
    if (std::exchange(accepted_, true)) return;
    if (status() == kPartialContent) return acceptRange();
    const bool refused = continues() && status() == kRangeNotSatisfiable;
    startAnew();
    if (refused) throw std::runtime_error("The service cannot continue the file from where it was cut off");
    total_ = easy()->info<curl_off_t>(CURLINFO_CONTENT_LENGTH_DOWNLOAD_T);
    if (status() == 200) answer_.validator = validatorOfAnswer();
}

void DownloadTransfer::acceptRange() {
    const char* text = easy()->header("Content-Range");
    const auto range = parseContentRange(text ? text : "");
    if (!continues()) startAnew();
    if (!range || range->first != file_.size()) {
        startAnew();
        throw std::runtime_error("The service answered with another range than was asked for");
    }
    total_ = range->total.value_or(range->last + 1);
    if (auto validator = validatorOfAnswer()) answer_.validator = std::move(validator);
}

void DownloadTransfer::startAnew() {
    file_.clear();
    answer_.validator.reset();
}

void DownloadTransfer::receive(std::string_view bytes) {
    accept();
    file_.append(bytes);
    report(file_.size(), total_);
}

/// An entity tag that promises the same bytes, or a date that was old enough when it was given to do so.
std::optional<std::string> DownloadTransfer::validatorOfAnswer() const {
    const char* tag = easy()->header("ETag");
    if (tag && tag[0] == '"') return tag;
    const char* modified = easy()->header("Last-Modified");
    const char* date = easy()->header("Date");
    if (!modified || !date) return std::nullopt;
    const auto modifiedTime = curl_getdate(modified, nullptr);
    const auto answerTime = curl_getdate(date, nullptr);
    if (modifiedTime < 0 || answerTime <= modifiedTime) return std::nullopt;
    return modified;
}

void DownloadTransfer::checkComplete() {
    accept();
    if (total_ >= 0 && file_.size() < total_)
        throw std::runtime_error("The answer ended before the file did");
}

void DownloadTransfer::settle(std::optional<TransportError> error) {
    if (!error) {
        try {
            checkComplete();
        } catch (const std::exception& cause) {
            error = TransportError{TransportError::Kind::failed, cause.what()};
        }
    }
    file_.close();
    if (const int code = status(); code > 0) answer_.status = code;
    answer_.error = std::move(error);
}

void DownloadTransfer::complete() {
    const auto completion = std::exchange(completion_, nullptr);
    if (completion) completion(std::move(answer_));
}

}  // namespace baseapi::inline v1
