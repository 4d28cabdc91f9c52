#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/slice_file.h"
#include "baseapi/core/thread_pool_util.h"
#include "baseapi/transfer/upload_process_result.h"
#include "tests/support/event.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_platform.h"
#include "tests/transfer/waiting.h"

namespace baseapi {

using test_support::Event;
using test_support::Exchange;
using test_support::ScriptedServer;

/// Keeps the events of an upload as texts, such as "onItemFinish 10 0 true".
class UploadEvents {
  public:
    UploadProcessCallback callback() {
        return [this](const UploadProcessResult& event) { take(event); };
    }

    std::vector<std::string> all() const {
        std::lock_guard lock(mutex_);
        return texts_;
    }
    /// Without the progress, whose number is the transport's.
    std::vector<std::string> withoutProgress() const {
        auto texts = all();
        std::erase_if(texts, [](const auto& text) { return text.starts_with("onProgress"); });
        return texts;
    }
    std::size_t lastEvents() const {
        std::lock_guard lock(mutex_);
        return lastEvents_;
    }
    /// The last event, the first of them where a cancelled upload repeats it; empty where none comes in time.
    std::string waitForLast() const {
        if (!waitForLasts(1)) return "";
        const auto texts = all();
        return *std::ranges::find_if(texts, isLast);
    }
    /// Waits for so many last events.
    [[nodiscard]] bool waitForLasts(std::size_t count) const {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, test_support::kPatience, [&] { return lastEvents_ >= count; });
    }

  private:
    static bool isLast(const std::string& text) {
        return text.starts_with("onSuccess") || text.starts_with("onFailure");
    }
    void take(const UploadProcessResult& event) {
        const auto text = describe(event);
        std::lock_guard lock(mutex_);
        texts_.push_back(text);
        if (isLast(text)) {
            ++lastEvents_;
            changed_.notify_all();
        }
    }
    static std::string describe(const UploadProcessResult& event) {
        const auto number = [](std::int64_t value) { return std::to_string(value); };
        return event.visit(
            [&](const UploadProcessResult::onProgress& it) {
                return "onProgress " + number(it.bytes) + "/" + number(it.total);
            },
            [&](const UploadProcessResult::onSuccess& it) {
                return "onSuccess " + number(it.code) + " " + it.msg;
            },
            [&](const UploadProcessResult::onFailure& it) {
                return "onFailure " + number(it.errCode) + " " + it.errMsg;
            },
            [&](const UploadProcessResult::onFileCreate& it) {
                return "onFileCreate " + it.response.fileId.value_or("nil");
            },
            [&](const UploadProcessResult::onItemFinish& it) {
                return "onItemFinish " + it.subHash + " " + number(it.index) +
                       (it.isSuccess ? " true" : " false");
            });
    }

    mutable std::mutex mutex_;
    std::vector<std::string> texts_;
    mutable std::condition_variable changed_;
    std::size_t lastEvents_ = 0;
};

/// A slicer that does what the test says.
class TestSlicer : public ISliceFile {
  public:
    using Work = std::function<std::optional<std::string>(const URL&)>;

    explicit TestSlicer(Work work) : work_(std::move(work)) {}
    std::optional<std::string> calcSha256(const URL& of) override { return work_(of); }

  private:
    Work work_;
};

/// A slicer's text of a file of three bytes.
inline constexpr const char* onePart =
    R"({"size":3,"hash":"whole-hash","parts":[{"partNumber":1,"partOffset":0,"partSize":3}]})";

inline std::shared_ptr<ISliceFile> slicerOf(std::optional<std::string> text) {
    return std::make_shared<TestSlicer>([text = std::move(text)](const URL&) { return text; });
}

/// A service whose answers the test gives by verb and path, with a local file to send to it.
class UploadTest : public testing::Test {
  protected:
    static constexpr const char* create = "POST /quillbox/ose/v1/files/create";
    static constexpr const char* complete = "POST /quillbox/ose/v1/files/complete";

    void SetUp() override {
        test_support::recordingLog().clear();
        CloudInstance::shared().host = server_->url();
        CloudInstance::shared().token = "token";
        CloudInstance::shared().contentId = "container";
        on(complete, 200, R"({"code":0,"msg":"done"})");
    }

    /// Ends whatever a test has left under way, so that none of it reaches the next.
    void TearDown() override {
        server_.reset();
        waitForQuiet();
    }

    void on(const std::string& verbAndPath, ScriptedServer::Handler handler) {
        std::lock_guard lock(mutex_);
        handlers_[verbAndPath] = std::move(handler);
    }
    void on(const std::string& verbAndPath, int status, const std::string& body = "") {
        on(verbAndPath, [=](Exchange& exchange) { exchange.answer(status, body); });
    }

    URL fileOf(const std::string& content, const std::string& name = "photo.jpg") const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
        return URL::file(folder_ / name);
    }

    /// The answer that names parts of the given sizes, one behind the other, at "/part/1" and so on.
    std::string createdWithParts(const std::vector<std::int64_t>& sizes) const {
        std::string parts;
        std::int64_t offset = 0;
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            const auto number = std::to_string(i + 1);
            parts += (i == 0 ? "" : ",") + std::string(R"({"partNumber":)") + number + R"(,"partSize":)" +
                     std::to_string(sizes[i]) + R"(,"partOffset":)" + std::to_string(offset) +
                     R"(,"uploadUrl":")" + server_->url("/part/" + number) + R"("})";
            offset += sizes[i];
        }
        return R"({"code":0,"msg":"ok","fileId":"file-1","rapidUpload":false,"exist":false,"multiParts":[)" +
               parts + "]}";
    }

    /// The requests so far as "VERB /path".
    std::vector<std::string> calls() const {
        std::vector<std::string> calls;
        for (const auto& request : server_->requests()) calls.push_back(request.verb + " " + request.target);
        return calls;
    }

    bool logged(const std::string& line) const { return test_support::recordingLog().contains(line); }

    test_support::TemporaryFolder folder_;

  private:
    ScriptedServer::Handler handlerOf(const test_support::ReceivedRequest& request) {
        std::lock_guard lock(mutex_);
        const auto found = handlers_.find(request.verb + " " + request.target);
        if (found != handlers_.end()) return found->second;
        return [](Exchange& unknown) { unknown.answer(404, "{}"); };
    }

    std::mutex mutex_;
    std::map<std::string, ScriptedServer::Handler> handlers_;

  protected:
    std::unique_ptr<ScriptedServer> server_ = std::make_unique<ScriptedServer>(
        [this](Exchange& exchange) { handlerOf(exchange.request)(exchange); });
};

/// Occupies all workers of the queue of the parts while it lives.
class OccupiedQueue {
  public:
    OccupiedQueue() {
        auto& queue = ThreadPoolUtil::queue();
        for (int i = 0; i < queue.width(); ++i) {
            auto& started = started_.emplace_back(std::make_shared<Event>());
            queue.addOperation(std::make_shared<BlockOperation>([started, release = release_](const auto&) {
                started->set();
                EXPECT_TRUE(release->wait());
            }));
        }
        for (auto& started : started_) EXPECT_TRUE(started->wait());
    }
    ~OccupiedQueue() { release_->set(); }
    OccupiedQueue(const OccupiedQueue&) = delete;
    OccupiedQueue& operator=(const OccupiedQueue&) = delete;

  private:
    std::vector<std::shared_ptr<Event>> started_;
    std::shared_ptr<Event> release_ = std::make_shared<Event>();
};

/// On a machine with one processor no part ever runs.
#define BASEAPI_NEEDS_PARTS() \
    if (ThreadPoolUtil::queue().width() == 0) GTEST_SKIP() << "the queue of the parts has no width here"

}  // namespace baseapi
