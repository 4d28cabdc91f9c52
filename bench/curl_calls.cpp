#include "bench/curl_calls.h"

#include <curl/curl.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "bench/curl_headers.h"
#include "bench/require.h"

namespace bench {

namespace {

constexpr std::string_view body = R"({"type":"list","parentFileId":"root","hidden":false})";

struct Transfer {
    explicit Transfer(const std::string& url);
    ~Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    CURL* easy = curl_easy_init();
    HeaderList headers = operationHeaders();
    std::string answer;
    std::function<void()> done;
};

std::size_t store(const char* data, std::size_t size, std::size_t count, void* transfer) {
    static_cast<Transfer*>(transfer)->answer.append(data, size * count);
    return size * count;
}

Transfer::Transfer(const std::string& url) {
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body.data());
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, store);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(easy, CURLOPT_PRIVATE, this);
}

Transfer::~Transfer() {
    curl_easy_cleanup(easy);
}

/// Transfers on their way from one thread to another.
class Line {
  public:
    void push(Transfer* transfer) {
        {
            std::lock_guard lock(mutex_);
            waiting_.push_back(transfer);
        }
        filled_.notify_one();
    }
    std::deque<Transfer*> takeAll() {
        std::lock_guard lock(mutex_);
        return std::exchange(waiting_, {});
    }
    /// Waits for one; nothing once the line is closed.
    Transfer* pop() {
        std::unique_lock lock(mutex_);
        filled_.wait(lock, [&] { return closed_ || !waiting_.empty(); });
        if (waiting_.empty()) return nullptr;
        auto* transfer = waiting_.front();
        waiting_.pop_front();
        return transfer;
    }
    void close() {
        {
            std::lock_guard lock(mutex_);
            closed_ = true;
        }
        filled_.notify_one();
    }

  private:
    std::mutex mutex_;
    std::condition_variable filled_;
    std::deque<Transfer*> waiting_;
    bool closed_ = false;
};

class CurlCaller : public Caller {
  public:
    explicit CurlCaller(std::string url)
        : url_(std::move(url)),
          network_([this](std::stop_token stop) { drive(stop); }),
          worker_([this] { work(); }) {}

    ~CurlCaller() override {
        network_.request_stop();
        curl_multi_wakeup(multi_);
        network_.join();
        answered_.close();
        worker_.join();
        idle_.clear();
        curl_multi_cleanup(multi_);
    }

    void call(std::function<void()> done) override {
        auto transfer = takeIdle();
        transfer->done = std::move(done);
        asked_.push(transfer.release());
        curl_multi_wakeup(multi_);
    }

  private:
    std::unique_ptr<Transfer> takeIdle() {
        std::lock_guard lock(idleMutex_);
        if (idle_.empty()) return std::make_unique<Transfer>(url_);
        auto transfer = std::move(idle_.back());
        idle_.pop_back();
        return transfer;
    }

    /// The network thread.
    void drive(const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            for (auto* transfer : asked_.takeAll()) curl_multi_add_handle(multi_, transfer->easy);
            int running = 0;
            curl_multi_perform(multi_, &running);
            handOverAnswers();
            curl_multi_poll(multi_, nullptr, 0, 1000, nullptr);
        }
    }

    void handOverAnswers() {
        int left = 0;
        while (const auto* message = curl_multi_info_read(multi_, &left)) {
            auto* easy = message->easy_handle;
            require(message->data.result == CURLE_OK, curl_easy_strerror(message->data.result));
            Transfer* transfer = nullptr;
            curl_easy_getinfo(easy, CURLINFO_PRIVATE, &transfer);
            curl_multi_remove_handle(multi_, easy);
            answered_.push(transfer);
        }
    }

    /// The worker thread.
    void work() {
        while (std::unique_ptr<Transfer> transfer{answered_.pop()}) {
            auto done = std::exchange(transfer->done, nullptr);
            transfer->answer.clear();
            {
                std::lock_guard lock(idleMutex_);
                idle_.push_back(std::move(transfer));
            }
            done();
        }
    }

    const std::string url_;
    CURLM* multi_ = curl_multi_init();
    Line asked_;
    Line answered_;
    std::mutex idleMutex_;
    std::vector<std::unique_ptr<Transfer>> idle_;
    std::jthread network_;
    std::jthread worker_;
};

}  // namespace

std::unique_ptr<Caller> curlCaller(const std::string& host) {
    curl_global_init(CURL_GLOBAL_DEFAULT);
    return std::make_unique<CurlCaller>(host + "/quillbox/ose/v1/files/list");
}

}  // namespace bench
