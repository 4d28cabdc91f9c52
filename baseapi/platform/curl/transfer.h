#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "baseapi/platform/curl/easy_handle.h"
#include "baseapi/platform/curl/header_lines.h"
#include "baseapi/platform/http_transport.h"

namespace baseapi::inline v1 {

class TransferLoop;

/// How far a transfer has come. Two of them that are equal mean that nothing moved in between.
struct Movement {
    curl_off_t sent = 0;
    curl_off_t received = 0;
    long headBytes = 0;
    curl_off_t stages = 0;
    /// What the kernel still holds of what was sent: on a slow line this moves long after the last byte was
    /// handed over.
    int unsent = 0;

    bool operator==(const Movement&) const = default;
};

/// What the three kinds of transfer have in common: the way from `resume` over the loop to the
/// delegate queue.
class Transfer : public HttpTask, public std::enable_shared_from_this<Transfer> {
  public:
    enum class Kind { data, upload, download };

    std::int64_t identifier() const final { return identifier_; }
    void resume() final;
    void cancel() final;

    Kind kind() const { return kind_; }
    const std::string& url() const { return url_; }
    /// Scheme, host and port as the URL spells them; empty where there are none.
    std::string_view origin() const { return origin_; }
    std::chrono::milliseconds idleTimeout() const { return idleTimeout_; }
    bool cancelled() const { return state_ == State::cancelled; }

    // From here on for the thread alone that has the loop's turn.

    /// Tells a new handle what is the same for all transfers of this kind.
    virtual void setUpHandle(EasyHandle& easy) const;
    /// Tells the handle what it needs for this transfer; throws where it cannot be.
    void begin(EasyHandle& easy);
    /// All but `unsent`.
    Movement movement() const;
    /// The port of this end of its connection.
    long localPort() const;
    /// libcurl has ended the transfer.
    void end(CURLcode code);
    /// The transfer ends before libcurl has ended it, or without having begun.
    void fail(TransportError error);

    /// Its place among the running transfers.
    std::size_t slot = 0;

  protected:
    Transfer(std::shared_ptr<TransferLoop> loop, Kind kind, std::string url,
             std::chrono::milliseconds idleTimeout, HttpTransport::Progress progress);

    /// The handle, while there is one.
    EasyHandle* easy() const { return easy_; }
    /// The answer's status, once its head is there; 0 before.
    int status() const;
    /// How much of the request's body has gone.
    curl_off_t sent() const;
    /// Makes `resume` end in an error at once.
    void reject(std::string reason) { rejected_ = std::move(reason); }
    /// New totals; they are brought to the delegate queue now and then, the last of them always.
    void report(std::int64_t done, std::int64_t total);

    virtual void prepare(EasyHandle& easy) = 0;
    /// Takes bytes of the answer's body; throws where it cannot.
    virtual void receive(std::string_view bytes) = 0;
    /// Told of every request that libcurl sends after the first one, which is for a redirect.
    virtual void followRedirect(int /*status*/) {}
    /// Called once, in a turn of the loop unless the transfer never got there, to make the answer ready.
    /// `easy` is null where nothing was sent.
    virtual void settle(std::optional<TransportError> error) = 0;
    /// On the delegate queue: hands the answer to the completion, both of which are gone afterwards.
    virtual void complete() = 0;

  private:
    struct Totals {
        std::int64_t done;
        std::int64_t total;
    };

    static std::size_t onHeader(char* bytes, std::size_t one, std::size_t size, void* transfer);
    static std::size_t onBody(char* bytes, std::size_t one, std::size_t size, void* transfer);
    static int onRequest(void* transfer, char*, char*, int, int);

    std::optional<TransportError> outcome(CURLcode code) const;
    void finish(std::optional<TransportError> error);
    void deliver();
    void run();

    const std::shared_ptr<TransferLoop> loop_;
    const Kind kind_;
    const std::int64_t identifier_;
    const std::string url_;
    const std::string_view origin_;
    const std::chrono::milliseconds idleTimeout_;
    std::optional<std::string> rejected_;

    enum class State { fresh, resumed, cancelled };
    std::atomic<State> state_{State::fresh};

    // Of the thread that has the loop's turn.
    EasyHandle* easy_ = nullptr;
    bool headComplete_ = false;
    long requestsSent_ = 0;
    bool sentAgain_ = false;
    std::string cause_;
    std::chrono::steady_clock::time_point nextReport_{};
    char curlText_[CURL_ERROR_SIZE] = {};

    // Between the loop and the delegate queue.
    std::mutex mutex_;
    HttpTransport::Progress progress_;
    std::optional<Totals> unreported_;
    bool ended_ = false;
    bool scheduled_ = false;
};

}  // namespace baseapi::inline v1
