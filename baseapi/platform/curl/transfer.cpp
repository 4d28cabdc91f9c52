#include "baseapi/platform/curl/transfer.h"

#include <strings.h>

#include <exception>
#include <utility>

#include "baseapi/platform/curl/transfer_loop.h"
#include "baseapi/platform/thread.h"

namespace baseapi::inline v1 {
namespace {

/// Progress is brought to the delegate queue this often: waking a thread for every piece costs more than
/// moving the piece.
constexpr std::chrono::milliseconds kReportInterval{20};

/// "http://host:port" of an http or https URL, empty for any other text. libcurl would guess: a scheme where
/// there is none, and a host in "http:///path".
std::string_view originOf(std::string_view url) {
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (url.size() < scheme.size() || ::strncasecmp(url.data(), scheme.data(), scheme.size()) != 0)
            continue;
        const auto end = std::min(url.find_first_of("/?#", scheme.size()), url.size());
        return end > scheme.size() ? url.substr(0, end) : std::string_view();
    }
    return {};
}

bool isHttps(std::string_view origin) {
    return ::strncasecmp(origin.data(), "https", 5) == 0;
}

TransportError failed(std::string text) {
    return {TransportError::Kind::failed, std::move(text)};
}

}  // namespace

Transfer::Transfer(std::shared_ptr<TransferLoop> loop, Kind kind, std::string url,
                   std::chrono::milliseconds idleTimeout, HttpTransport::Progress progress)
    : loop_(std::move(loop)),
      kind_(kind),
      identifier_(loop_->newIdentifier()),
      url_(std::move(url)),
      origin_(originOf(url_)),
      idleTimeout_(idleTimeout),
      progress_(std::move(progress)) {
    if (origin_.empty()) reject("Not an http or https URL");
    if (hasControlCharacter(url_) || url_.find(' ') != std::string::npos) {
        reject("The URL has a space or a control character");
    }
}

void Transfer::resume() {
    auto fresh = State::fresh;
    if (!state_.compare_exchange_strong(fresh, State::resumed)) return;
    loop_->countBegun();
    if (rejected_) {
        finish(failed(*rejected_));
    } else {
        loop_->begin(shared_from_this());
    }
}

void Transfer::cancel() {
    const auto before = state_.exchange(State::cancelled);
    if (before == State::resumed) {
        loop_->cancel(shared_from_this());
    } else if (before == State::fresh) {
        loop_->countBegun();
        finish(TransportError{TransportError::Kind::cancelled, "Cancelled"});
    }
}

void Transfer::setUpHandle(EasyHandle& easy) const {
    easy.set(CURLOPT_PROTOCOLS_STR, "http,https");
    easy.set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    easy.set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
    easy.set(CURLOPT_FOLLOWLOCATION, 1L);
    easy.set(CURLOPT_MAXREDIRS, 20L);
    // A name and a password in an address, of a redirect perhaps, do not become a header.
    easy.set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_NONE));
    easy.set(CURLOPT_PATH_AS_IS, 1L);
    easy.set(CURLOPT_NOSIGNAL, 1L);
    // A name that is still being looked up does not hold the thread when its transfer is cancelled.
    easy.set(CURLOPT_QUICK_EXIT, 1L);
    easy.set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    easy.set(CURLOPT_HEADERFUNCTION, &Transfer::onHeader);
    easy.set(CURLOPT_WRITEFUNCTION, &Transfer::onBody);
    easy.set(CURLOPT_PREREQFUNCTION, &Transfer::onRequest);
}

void Transfer::begin(EasyHandle& easy) {
    easy.set(CURLOPT_PRIVATE, this);
    easy.set(CURLOPT_HEADERDATA, this);
    easy.set(CURLOPT_WRITEDATA, this);
    easy.set(CURLOPT_PREREQDATA, this);
    easy.set(CURLOPT_ERRORBUFFER, curlText_);
    easy.setURL(url_);
    // Several addresses of one host share this time, so that a dead one leaves some for the next.
    easy.set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(idleTimeout_.count()) + 1);
    // Many transfers to a new host wait for its first connection, which may carry them all.
    easy.set(CURLOPT_PIPEWAIT, isHttps(origin_) ? 1L : 0L);
    prepare(easy);
    easy_ = &easy;
}

Movement Transfer::movement() const {
    Movement now;
    now.sent = easy_->info<curl_off_t>(CURLINFO_SIZE_UPLOAD_T);
    now.received = easy_->info<curl_off_t>(CURLINFO_SIZE_DOWNLOAD_T);
    now.headBytes = easy_->info<long>(CURLINFO_HEADER_SIZE) + easy_->info<long>(CURLINFO_REQUEST_SIZE);
    for (const auto stage : {CURLINFO_NAMELOOKUP_TIME_T, CURLINFO_CONNECT_TIME_T, CURLINFO_APPCONNECT_TIME_T,
                             CURLINFO_PRETRANSFER_TIME_T, CURLINFO_REDIRECT_TIME_T}) {
        now.stages += easy_->info<curl_off_t>(stage);
    }
    return now;
}

long Transfer::localPort() const {
    return easy_->info<long>(CURLINFO_LOCAL_PORT);
}

void Transfer::end(CURLcode code) {
    finish(outcome(code));
}

void Transfer::fail(TransportError error) {
    finish(std::move(error));
}

int Transfer::status() const {
    return headComplete_ ? static_cast<int>(easy_->info<long>(CURLINFO_RESPONSE_CODE)) : 0;
}

curl_off_t Transfer::sent() const {
    return requestsSent_ > 0 ? easy_->info<curl_off_t>(CURLINFO_SIZE_UPLOAD_T) : 0;
}

void Transfer::report(std::int64_t done, std::int64_t total) {
    {
        const std::lock_guard lock(mutex_);
        if (!progress_) return;
        unreported_ = Totals{done, total};
    }
    const auto now = std::chrono::steady_clock::now();
    if (now < nextReport_) return;
    nextReport_ = now + kReportInterval;
    deliver();
}

std::size_t Transfer::onHeader(char* bytes, std::size_t one, std::size_t size, void* transfer) {
    auto& self = *static_cast<Transfer*>(transfer);
    const std::string_view line(bytes, one * size);
    if (line.starts_with("HTTP/")) {
        self.headComplete_ = false;
    } else if (line == "\r\n" || line == "\n") {
        self.headComplete_ = true;
    }
    return size;
}

std::size_t Transfer::onBody(char* bytes, std::size_t one, std::size_t size, void* transfer) {
    auto& self = *static_cast<Transfer*>(transfer);
    try {
        self.receive({bytes, one * size});
        return size;
    } catch (const std::exception& error) {
        self.cause_ = error.what();
        return CURL_WRITEFUNC_ERROR;
    }
}

/// Sees every request before it is sent. libcurl sends a second time where a kept connection breaks before
/// the first byte of the answer: but the service may have acted on the first, so that one was the attempt.
int Transfer::onRequest(void* transfer, char*, char*, int, int) {
    auto& self = *static_cast<Transfer*>(transfer);
    self.sentAgain_ = self.requestsSent_++ > self.easy_->info<long>(CURLINFO_REDIRECT_COUNT);
    if (self.sentAgain_) return CURL_PREREQFUNC_ABORT;
    if (self.requestsSent_ > 1) self.followRedirect(self.status());
    self.headComplete_ = false;
    return CURL_PREREQFUNC_OK;
}

std::optional<TransportError> Transfer::outcome(CURLcode code) const {
    if (sentAgain_) return failed("The network connection was lost before the answer came");
    if (!cause_.empty()) return failed(cause_);
    const std::string text = curlText_[0] ? curlText_ : curl_easy_strerror(code);
    switch (code) {
        case CURLE_OK:
            if (headComplete_ && status() >= 200) return std::nullopt;
            return failed("The network connection was lost inside the answer's head");
        case CURLE_OPERATION_TIMEDOUT:
            return TransportError{TransportError::Kind::timedOut, "The request timed out"};
        case CURLE_GOT_NOTHING:
        case CURLE_PARTIAL_FILE:
        case CURLE_RECV_ERROR:
        case CURLE_SEND_ERROR:
            return failed("The network connection was lost: " + text);
        default:
            return failed(text);
    }
}

void Transfer::finish(std::optional<TransportError> error) {
    settle(std::move(error));
    easy_ = nullptr;
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    deliver();
}

/// Has `run` called on the delegate queue, unless that is on its way.
void Transfer::deliver() {
    {
        const std::lock_guard lock(mutex_);
        if (std::exchange(scheduled_, true)) return;
    }
    loop_->delegateQueue().post([self = shared_from_this()] { self->run(); });
}

void Transfer::run() {
    for (;;) {
        std::optional<Totals> totals;
        {
            const std::lock_guard lock(mutex_);
            totals = std::exchange(unreported_, std::nullopt);
            if (!totals && !ended_) {
                scheduled_ = false;
                return;
            }
        }
        if (!totals) break;
        runJob([&] { progress_(totals->done, totals->total); });
    }
    progress_ = nullptr;
    runJob([this] { complete(); });
    loop_->countEnded();
}

}  // namespace baseapi::inline v1
