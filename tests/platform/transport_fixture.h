#pragma once

#include <future>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "baseapi/platform/curl_transport.h"
#include "baseapi/platform/worker_pool.h"
#include "tests/support/event.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"

namespace baseapi {

using test_support::Event;
using test_support::Exchange;
using test_support::ScriptedServer;
using test_support::TemporaryFolder;

/// An answer that a test waits for; `get` throws std::runtime_error where it does not come.
template <class Answer>
class Awaited {
  public:
    std::function<void(Answer)> completion() {
        return [promise = promise_](Answer answer) { promise->set_value(std::move(answer)); };
    }
    Answer get() {
        if (future_.wait_for(test_support::kPatience) != std::future_status::ready) {
            throw std::runtime_error("no completion came");
        }
        return future_.get();
    }
    bool ready() const { return future_.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }

  private:
    std::shared_ptr<std::promise<Answer>> promise_ = std::make_shared<std::promise<Answer>>();
    std::future<Answer> future_ = promise_->get_future();
};

struct Totals {
    std::int64_t done;
    std::int64_t total;

    bool operator==(const Totals&) const = default;
};

/// The progress reports of one transfer.
class ProgressRecord {
  public:
    HttpTransport::Progress listener() {
        return [this](std::int64_t done, std::int64_t total) {
            const std::lock_guard lock(mutex_);
            reports_.push_back({done, total});
        };
    }
    std::vector<Totals> reports() const {
        const std::lock_guard lock(mutex_);
        return reports_;
    }

  private:
    mutable std::mutex mutex_;
    std::vector<Totals> reports_;
};

inline ByteBuffer bufferOf(std::string_view bytes) {
    ByteBuffer buffer{std::make_unique<char[]>(bytes.size()), bytes.size()};
    std::copy(bytes.begin(), bytes.end(), buffer.data.get());
    return buffer;
}

inline std::shared_ptr<CurlTransport> makeTransport(CurlTransport::Options options = {}) {
    return std::make_shared<CurlTransport>(std::make_shared<WorkerPool>("test-delegate"), std::move(options));
}

inline DataAnswer fetch(HttpTransport& transport, DataRequest request) {
    Awaited<DataAnswer> answer;
    transport.dataTask(std::move(request), answer.completion())->resume();
    return answer.get();
}

inline DataAnswer get(HttpTransport& transport, std::string url) {
    return fetch(transport, {.url = std::move(url), .verb = "GET"});
}

}  // namespace baseapi
