#include "baseapi/platform/curl/data_transfer.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace baseapi::inline v1 {
namespace {

/// The JSON reader reads in steps of this many bytes, also over the end of the text.
constexpr std::size_t kSpareBytes = 64;

/// An announced length is believed up to here; beyond it the body grows as it comes.
constexpr curl_off_t kBelievedLength = 64 << 20;

/// What libcurl decodes. It would write the same header itself, at six times the cost of one that it is
/// given.
std::string decodedEncodings() {
    const auto features = curl_version_info(CURLVERSION_NOW)->features;
    std::string list;
    for (const auto& [feature, names] :
         {std::pair(CURL_VERSION_LIBZ, "deflate, gzip"), std::pair(CURL_VERSION_BROTLI, "br"),
          std::pair(CURL_VERSION_ZSTD, "zstd")}) {
        if ((features & feature) != 0) list.append(list.empty() ? "" : ", ").append(names);
    }
    return list;
}

}  // namespace

DataTransfer::DataTransfer(std::shared_ptr<TransferLoop> loop, DataRequest request,
                           std::function<void(DataAnswer)> completion, std::size_t longestBody)
    : Transfer(std::move(loop), Kind::data, std::move(request.url), request.idleTimeout, nullptr),
      verb_(std::move(request.verb)),
      body_(std::move(request.body)),
      longestBody_(longestBody),
      completion_(std::move(completion)) {
    try {
        static const auto& encodings = *new std::string(decodedEncodings());
        headers_.emplace(request.headers, encodings);
    } catch (const std::invalid_argument& error) {
        reject(error.what());
    }
    if (!isToken(verb_)) reject("The verb is no HTTP token");
    // These verbs announce the length of their body, 0 as well.
    if (!body_ && (verb_ == "POST" || verb_ == "PUT" || verb_ == "PATCH")) body_.emplace();
}

void DataTransfer::setUpHandle(EasyHandle& easy) const {
    Transfer::setUpHandle(easy);
    easy.set(CURLOPT_ACCEPT_ENCODING, "");
    easy.set(CURLOPT_NOPROGRESS, 1L);
}

void DataTransfer::prepare(EasyHandle& easy) {
    easy.set(CURLOPT_HTTPHEADER, headers_->list());
    easy.set(CURLOPT_HTTPGET, 1L);
    if (body_) {
        easy.set(CURLOPT_POST, 1L);
        easy.set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body_->size()));
        easy.set(CURLOPT_POSTFIELDS, body_->data());
    }
    const bool plain = verb_ == (body_ ? "POST" : "GET");
    easy.set(CURLOPT_CUSTOMREQUEST, plain ? nullptr : verb_.c_str());
    // A redirected POST becomes a GET, as everywhere; any other verb keeps its body.
    easy.set(CURLOPT_POSTREDIR, plain ? 0L : static_cast<long>(CURL_REDIR_POST_301 | CURL_REDIR_POST_302));
}

void DataTransfer::followRedirect(int status) {
    if (status == 303) easy()->set(CURLOPT_CUSTOMREQUEST, static_cast<const char*>(nullptr));
}

void DataTransfer::makeRoom(std::size_t more) {
    auto& body = answer_.body;
    const auto needed = body.size() + more;
    if (needed > longestBody_)
        throw std::length_error("The answer is longer than this library holds in memory");
    if (needed + kSpareBytes <= body.capacity()) return;
    const auto announced = easy()->info<curl_off_t>(CURLINFO_CONTENT_LENGTH_DOWNLOAD_T);
    const auto believed = announced > 0 ? static_cast<std::size_t>(std::min(announced, kBelievedLength)) : 0;
    body.reserve(std::max({believed, needed, 2 * body.size()}) + kSpareBytes);
}

void DataTransfer::receive(std::string_view bytes) {
    makeRoom(bytes.size());
    answer_.body.append(bytes);
}

void DataTransfer::settle(std::optional<TransportError> error) {
    answer_.error = std::move(error);
    if (answer_.error) {
        answer_.body.clear();
    } else {
        answer_.status = status();
        answer_.body.reserve(kSpareBytes);
    }
}

void DataTransfer::complete() {
    body_.reset();
    const auto completion = std::exchange(completion_, nullptr);
    if (completion) completion(std::move(answer_));
}

}  // namespace baseapi::inline v1
