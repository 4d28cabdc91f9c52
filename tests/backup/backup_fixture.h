#pragma once

#include <gmock/gmock.h>

#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "baseapi/backup/backup_result.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/preferences.h"
#include "tests/support/event.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_platform.h"
#include "tests/transfer/upload_fixture.h"

namespace baseapi {

/// Events as texts, of runs that may go on after their last event: what they still send must not reach the
/// service of the next test, so the end of these events waits for the end of the runs.
class TextEvents {
  public:
    TextEvents() = default;
    TextEvents(const TextEvents&) = delete;
    TextEvents& operator=(const TextEvents&) = delete;
    ~TextEvents() {
        held_.reset();
        EXPECT_TRUE(letGo_->wait()) << "a run goes on after its test";
    }

    /// Adds a text. Belongs into the run's callback, with which it goes.
    auto writer() {
        return [this, held = held_](const std::string& text) { add(text); };
    }
    std::vector<std::string> all() const {
        std::lock_guard lock(mutex_);
        return texts_;
    }
    /// The first text that begins as one of the two; empty where none comes in time.
    std::string waitFor(std::string_view one, std::string_view other) const {
        const auto begins = [&](const auto& text) {
            return text.starts_with(one) || text.starts_with(other);
        };
        std::unique_lock lock(mutex_);
        const auto there = [&] { return std::ranges::any_of(texts_, begins); };
        if (!changed_.wait_for(lock, test_support::kPatience, there)) return "";
        return *std::ranges::find_if(texts_, begins);
    }

  private:
    void add(const std::string& text) {
        std::lock_guard lock(mutex_);
        texts_.push_back(text);
        changed_.notify_all();
    }

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<std::string> texts_;
    std::shared_ptr<test_support::Event> letGo_ = std::make_shared<test_support::Event>();
    std::shared_ptr<void> held_{nullptr, [letGo = letGo_](void*) { letGo->set(); }};
};

/// The events of one run, as texts.
class BackupEvents {
  public:
    BackupCallback callback() {
        return [add = events_.writer()](const BackupResult& event) {
            event.visit(
                [&](const BackupResult::onComplete& it) {
                    add("onComplete " + std::to_string(it.succCount) + " " + std::to_string(it.failCount) +
                        " " + std::to_string(it.code) + " " + it.msg);
                },
                [&](const BackupResult::onProgress& it) {
                    add("onProgress " + std::to_string(it.succCount) + " " + std::to_string(it.failCount));
                });
        };
    }

    std::vector<std::string> all() const { return events_.all(); }
    std::vector<std::string> completions() const {
        auto texts = all();
        std::erase_if(texts, [](const auto& text) { return !text.starts_with("onComplete"); });
        return texts;
    }
    /// The first `onComplete`; empty where none comes in time.
    std::string waitForComplete() const { return events_.waitFor("onComplete", "onComplete"); }

  private:
    TextEvents events_;
};

/// A service that answers every call of a run as a good one does, unless the test says otherwise by verb and
/// path.
class BackupServiceTest : public testing::Test {
  protected:
    using Handler = test_support::ScriptedServer::Handler;

    static constexpr const char* releaseLock = "DELETE /quillbox/ose/v1/backup/lock";
    static constexpr const char* takeLock = "POST /quillbox/ose/v1/backup/lock";
    static constexpr const char* keepLock = "PATCH /quillbox/cloudfileh5/v1/backup/lock";
    static constexpr const char* listRecords = "GET /quillbox/cloudfileh5/v1/backup/record";
    static constexpr const char* deleteRecord = "DELETE /quillbox/ose/v1/backup/record/old";
    static constexpr const char* createRecord = "POST /quillbox/ose/v1/backup/record";
    static constexpr const char* closeRecord = "PATCH /quillbox/cloudfileh5/v1/backup/record/record-1";
    static constexpr const char* getScope = "GET /quillbox/ose/v1/backup/device/7/scope";
    static constexpr const char* createDirectory = "POST /quillbox/ose/v1/directory";
    static constexpr const char* createFile = "POST /quillbox/ose/v1/files/create";

    void SetUp() override {
        test_support::recordingLog().clear();
        test_support::photoLibrary().reset();
        Preferences::shared().clear();
        auto& session = CloudInstance::shared();
        session.host = server_.url();
        session.token = "token";
        session.contentId = "container";
        session.sliceFile = slicerOf(R"({"size":7,"hash":"h","parts":[]})");
        on(releaseLock, R"({"code":0})");
        on(takeLock, R"({"code":0,"data":{"lockId":"lock-1"}})");
        on(listRecords, R"({"code":0,"data":[]})");
        on(deleteRecord, R"({"code":0})");
        on(createRecord, R"({"code":0,"data":{"recordId":"record-1","status":0,"version":1}})");
        on(closeRecord, R"({"code":0,"msg":"closed"})");
        on(createDirectory, [this](test_support::Exchange& exchange) {
            exchange.answer(200, R"({"code":0,"id":"folder-)" + std::to_string(++folders_) + "\"}");
        });
        on(createFile, R"({"code":0,"msg":"ok","fileId":"f","rapidUpload":true,"exist":false})");
    }

    void on(const std::string& verbAndPath, Handler handler) {
        std::lock_guard lock(mutex_);
        handlers_[verbAndPath] = std::move(handler);
    }
    void on(const std::string& verbAndPath, const std::string& body, int status = 200) {
        on(verbAndPath, [=](test_support::Exchange& exchange) { exchange.answer(status, body); });
    }
    /// The connection ends without an answer.
    void cut(const std::string& verbAndPath) {
        on(verbAndPath, [](test_support::Exchange& exchange) { exchange.reset(); });
    }

    /// The requests so far as "VERB /path?query", without the common beginning of the paths.
    std::vector<std::string> calls() const {
        std::vector<std::string> calls;
        for (const auto& request : server_.requests()) calls.push_back(request.verb + " " + request.target);
        return calls;
    }
    std::vector<test_support::ReceivedRequest> requestsOf(const std::string& verbAndPath) const {
        std::vector<test_support::ReceivedRequest> found;
        for (auto& request : server_.requests())
            if (routeOf(request) == verbAndPath) found.push_back(request);
        return found;
    }
    /// Waits until so many requests of the route have come.
    [[nodiscard]] bool waitFor(const std::string& verbAndPath, std::size_t count = 1) const {
        const auto deadline = std::chrono::steady_clock::now() + test_support::kPatience;
        while (requestsOf(verbAndPath).size() < count) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            if (!server_.waitForRequests(server_.requestCount() + 1, std::chrono::milliseconds(50))) continue;
        }
        return true;
    }
    static bool logged(const std::string& line) { return test_support::recordingLog().contains(line); }

    test_support::TemporaryFolder folder_;
    /// For an answer that comes when nobody waits any more: it outlives the server.
    test_support::Event late_;

  private:
    static std::string routeOf(const test_support::ReceivedRequest& request) {
        return request.verb + " " + request.target.substr(0, request.target.find('?'));
    }

    std::mutex mutex_;
    std::map<std::string, Handler> handlers_;
    std::atomic<int> folders_ = 0;

  protected:
    test_support::ScriptedServer server_{[this](test_support::Exchange& exchange) {
        Handler handler = [](test_support::Exchange& unknown) { unknown.answer(404, "{}"); };
        {
            std::lock_guard lock(mutex_);
            const auto found = handlers_.find(routeOf(exchange.request));
            if (found != handlers_.end()) handler = found->second;
        }
        handler(exchange);
    }};
};

}  // namespace baseapi
