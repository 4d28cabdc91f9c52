#include "baseapi/transfer/resumable_downloader.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>

#include <cmath>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "tests/support/event.h"
#include "tests/support/file_content.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_platform.h"
#include "tests/transfer/waiting.h"

namespace baseapi {
namespace fs = std::filesystem;
namespace {

using test_support::contentOf;
using test_support::Event;
using test_support::Exchange;
using test_support::ScriptedServer;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// Keeps what a download delivers, as texts.
class Deliveries {
  public:
    DownloadProgress progress() {
        return [this](double fraction) {
            std::lock_guard lock(mutex_);
            fractions_.push_back(fraction);
            progressed_.set();
        };
    }
    DownloadCompletion completion() {
        return [this](const DownloadResult& result) {
            std::lock_guard lock(mutex_);
            ends_.push_back(
                result.visit([](const DownloadResult::success& it) { return "success " + it.file.text(); },
                             [](const DownloadResult::failure& it) { return "failure " + it.message; }));
            ended_.set();
        };
    }
    /// The end; empty where none comes in time.
    std::string waitForEnd() { return ended_.wait() ? ends().back() : ""; }
    bool waitForProgress() { return progressed_.wait(); }
    std::vector<std::string> ends() const {
        std::lock_guard lock(mutex_);
        return ends_;
    }
    std::vector<double> fractions() const {
        std::lock_guard lock(mutex_);
        return fractions_;
    }

  private:
    mutable std::mutex mutex_;
    std::vector<std::string> ends_;
    std::vector<double> fractions_;
    Event ended_;
    Event progressed_;
};

class ResumableDownloaderTest : public testing::Test {
  protected:
    ResumableDownloaderTest() { test_support::recordingLog().clear(); }
    ResumableDownloaderTest(const ResumableDownloaderTest&) = delete;
    ResumableDownloaderTest& operator=(const ResumableDownloaderTest&) = delete;

    /// A downloader of "/content/file.bin" into `place_`.
    void serve(ScriptedServer::Handler handler) {
        server_ = std::make_unique<ScriptedServer>(std::move(handler));
        url_ = server_->url("/content/file.bin");
        downloader_ =
            std::make_shared<ResumableDownloader>(URL(url_), URL::file(place_), "com.resumable.download");
    }
    void start() { downloader_->start(deliveries_.progress(), deliveries_.completion()); }

    /// Waits for the end of whatever a test has left running, which must leave nothing behind.
    void TearDown() override {
        const std::weak_ptr<ResumableDownloader> running = downloader_;
        if (downloader_) downloader_->cancel();
        downloader_.reset();
        EXPECT_TRUE(
            eventually([&] { return running.expired() && fs::is_empty(test_support::temporaryFolder()); }));
        waitForQuiet();
    }

    static bool logged(const std::string& line) { return test_support::recordingLog().contains(line); }
    std::string succeeded() const { return "success " + place_.string(); }

    /// Answers half of "0123456789" and then nothing until the client goes; a request for the rest gets it.
    static ScriptedServer::Handler halfThenRest() {
        return [](Exchange& exchange) {
            if (exchange.request.header("Range") == "bytes=5-") {
                exchange.answer(206, "56789", {{"ETag", "\"v1\""}, {"Content-Range", "bytes 5-9/10"}});
                return;
            }
            exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 10\r\n\r\n01234");
            exchange.hold();
        };
    }
    /// Starts, waits for the first half, and cuts the transfer off.
    void cutInTheMiddle() {
        Deliveries cut;
        downloader_->start(cut.progress(), cut.completion());
        ASSERT_TRUE(cut.waitForProgress());
        downloader_->cancel();
        EXPECT_THAT(cut.waitForEnd(), StartsWith("failure "));
        EXPECT_EQ(cut.ends().size(), 1U);
    }

    test_support::TemporaryFolder folder_;
    fs::path place_ = folder_ / "place.bin";
    std::string url_;
    std::unique_ptr<ScriptedServer> server_;
    std::shared_ptr<ResumableDownloader> downloader_;
    Deliveries deliveries_;
};

TEST_F(ResumableDownloaderTest, FetchesTheContentIntoItsPlace) {
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    EXPECT_EQ(downloader_->currentState(), DownloadState::idle);
    EXPECT_EQ(downloader_->sessionIdentifier, "com.resumable.download");
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(contentOf(place_), "content");
    EXPECT_THAT(deliveries_.fractions(), Contains(1.0));
    EXPECT_TRUE(logged("Start downloading new tasks: " + url_));
    EXPECT_TRUE(logged("download didWriteData"));
    EXPECT_TRUE(logged("download progress 1"));
    EXPECT_THAT(test_support::recordingLog().lines(), Contains(StartsWith("===moveTempFile=== ")));
}

TEST_F(ResumableDownloaderTest, LeavesNothingBehindWhenTheHostHearsOfTheEnd) {
    serve([](Exchange& exchange) {
        exchange.request.number == 1 ? exchange.reset() : exchange.answer(200, "content");
    });
    for (int i = 0; i < 2; ++i) {
        Event ended;
        downloader_->start(nullptr, [&](const DownloadResult&) {
            EXPECT_TRUE(fs::is_empty(test_support::temporaryFolder()));
            ended.set();
        });
        ASSERT_TRUE(ended.wait());
        downloader_->cancel();
    }
}

TEST_F(ResumableDownloaderTest, KeepsTheStateAfterTheEndSoThatAStartNeedsACancelFirst) {
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(downloader_->currentState(), DownloadState::downloading);
    start();
    EXPECT_EQ(server_->requestCount(), 1U);
    downloader_->cancel();
    EXPECT_EQ(downloader_->currentState(), DownloadState::idle);
    Deliveries again;
    downloader_->start(again.progress(), again.completion());
    EXPECT_EQ(again.waitForEnd(), succeeded());
    EXPECT_EQ(server_->requestCount(), 2U);
    EXPECT_EQ(deliveries_.ends().size(), 1U);
}

TEST_F(ResumableDownloaderTest, FetchesAnEmptyFile) {
    serve([](Exchange& exchange) { exchange.answer(200, ""); });
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_TRUE(fs::exists(place_));
    EXPECT_EQ(contentOf(place_), "");
}

TEST_F(ResumableDownloaderTest, SavesWhateverTheAddressAnswers) {
    serve([](Exchange& exchange) { exchange.answer(404, "not here"); });
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(contentOf(place_), "not here");
}

TEST_F(ResumableDownloaderTest, MakesTheFolderOfThePlace) {
    place_ = folder_ / "a/b/c/place.bin";
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(contentOf(place_), "content");
}

TEST_F(ResumableDownloaderTest, ReplacesTheFileAtThePlace) {
    std::ofstream(place_) << "an old file that is longer";
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(contentOf(place_), "content");
}

TEST_F(ResumableDownloaderTest, FailsWhenTheFileCannotBeMoved) {
    fs::create_directory(place_);
    std::ofstream(place_ / "kept") << "x";
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    start();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure " + place_.string()));
    EXPECT_THAT(test_support::recordingLog().lines(),
                Contains(StartsWith("move file error = " + place_.string())));
    EXPECT_EQ(deliveries_.ends().size(), 1U);
}

TEST_F(ResumableDownloaderTest, IgnoresASecondStartWhileItRunsWithItsHandlers) {
    Event letGo;
    serve([&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(letGo));
        exchange.answer(200, "content");
    });
    start();
    Deliveries ignored;
    downloader_->start(ignored.progress(), ignored.completion());
    letGo.set();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    drainMainQueue();
    EXPECT_THAT(ignored.ends(), IsEmpty());
    EXPECT_THAT(ignored.fractions(), IsEmpty());
    EXPECT_EQ(server_->requestCount(), 1U);
}

TEST_F(ResumableDownloaderTest, FailsOnceWhenTheTransferBreaks) {
    serve([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 10\r\n\r\n01234");
        exchange.close();
    });
    start();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
    drainMainQueue();
    EXPECT_EQ(deliveries_.ends().size(), 1U);
    EXPECT_THAT(test_support::recordingLog().lines(), Contains(StartsWith("down file error = ")));
    EXPECT_FALSE(fs::exists(place_));
    EXPECT_EQ(server_->requestCount(), 1U);  // one attempt
}

TEST_F(ResumableDownloaderTest, FailsWhenTheAnswerEndsInsideItsHead) {
    serve([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Len");
        exchange.close();
    });
    start();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
    EXPECT_FALSE(fs::exists(place_));
}

TEST_F(ResumableDownloaderTest, LeavesTheOldFileAloneWhenTheTransferBreaks) {
    std::ofstream(place_) << "old";
    serve([](Exchange& exchange) { exchange.reset(); });
    start();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
    EXPECT_EQ(contentOf(place_), "old");
}

TEST_F(ResumableDownloaderTest, GivesTheFileTheRightsOfAnyNewFile) {
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    std::ofstream(folder_ / "any") << "x";
    EXPECT_EQ(fs::status(place_).permissions(), fs::status(folder_ / "any").permissions());
}

TEST_F(ResumableDownloaderTest, FailsWhenThereIsNoRoomForTheTemporaryFile) {
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    fs::remove(test_support::temporaryFolder());
    start();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure " + test_support::temporaryFolder().string()));
    fs::create_directory(test_support::temporaryFolder());
    EXPECT_EQ(deliveries_.ends().size(), 1U);
    EXPECT_EQ(server_->requestCount(), 0U);
}

TEST_F(ResumableDownloaderTest, HasNoResumeDataAfterAnErrorAndACancel) {
    serve([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 10\r\n\r\n01234");
        exchange.close();
    });
    start();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
    downloader_->cancel();
    EXPECT_FALSE(downloader_->hasResumeData());
}

TEST_F(ResumableDownloaderTest, FailsForWhatIsNoAddressOfTheNetwork) {
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    const auto downloader =
        std::make_shared<ResumableDownloader>(URL("ftp://127.0.0.1/x"), URL::file(place_), "");
    downloader->start(nullptr, deliveries_.completion());
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
}

TEST_F(ResumableDownloaderTest, FailsWhenTheTransferIsCancelled) {
    serve([](Exchange& exchange) { exchange.hold(); });
    start();
    ASSERT_TRUE(server_->waitForRequests(1));
    downloader_->cancel();
    EXPECT_EQ(downloader_->currentState(), DownloadState::idle);
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
    EXPECT_FALSE(downloader_->hasResumeData());  // nothing had arrived
    downloader_->cancel();
    drainMainQueue();
    EXPECT_EQ(deliveries_.ends().size(), 1U);
    EXPECT_FALSE(fs::exists(place_));
}

TEST_F(ResumableDownloaderTest, ContinuesATransferThatWasCutOff) {
    serve(halfThenRest());
    cutInTheMiddle();
    EXPECT_TRUE(downloader_->hasResumeData());
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(contentOf(place_), "0123456789");
    EXPECT_TRUE(logged("Continue downloading from the resume point: file.bin"));
    ASSERT_EQ(server_->requestCount(), 2U);
    EXPECT_EQ(server_->requests()[1].header("Range"), "bytes=5-");
    EXPECT_EQ(server_->requests()[1].header("If-Range"), "\"v1\"");
    EXPECT_FALSE(downloader_->hasResumeData());
    EXPECT_EQ(deliveries_.fractions().back(), 1.0);
}

TEST_F(ResumableDownloaderTest, ContinuesATransferThatWasCutOffTwice) {
    serve([](Exchange& exchange) {
        const auto range = exchange.request.header("Range");
        if (range == "bytes=8-")
            return exchange.answer(206, "89", {{"ETag", "\"v1\""}, {"Content-Range", "bytes 8-9/10"}});
        exchange.send(range == "bytes=5-"
                          ? "HTTP/1.1 206 Partial Content\r\nETag: \"v1\"\r\nContent-Range: bytes 5-9/10\r\n"
                            "Content-Length: 5\r\n\r\n567"
                          : "HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 10\r\n\r\n01234");
        exchange.hold();
    });
    cutInTheMiddle();
    cutInTheMiddle();
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(contentOf(place_), "0123456789");
}

TEST_F(ResumableDownloaderTest, FailsWhenAnotherRangeComesThanWasAskedFor) {
    serve([](Exchange& exchange) {
        if (exchange.request.header("Range"))
            return exchange.answer(206, "345", {{"ETag", "\"v1\""}, {"Content-Range", "bytes 3-5/10"}});
        exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 10\r\n\r\n01234");
        exchange.hold();
    });
    cutInTheMiddle();
    start();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
    EXPECT_FALSE(fs::exists(place_));
}

TEST_F(ResumableDownloaderTest, StartsAnewWhenTheServiceDoesNotContinue) {
    serve([](Exchange& exchange) {
        if (exchange.request.header("Range")) return exchange.answer(200, "ABC", {{"ETag", "\"v2\""}});
        exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 10\r\n\r\n01234");
        exchange.hold();
    });
    cutInTheMiddle();
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(contentOf(place_), "ABC");
}

TEST_F(ResumableDownloaderTest, FailsWhenTheRangeCannotBeSatisfied) {
    serve([](Exchange& exchange) {
        if (exchange.request.header("Range"))
            return exchange.answer(416, "too far", {{"Content-Range", "bytes */3"}});
        exchange.send("HTTP/1.1 200 OK\r\nETag: \"v1\"\r\nContent-Length: 10\r\n\r\n01234");
        exchange.hold();
    });
    cutInTheMiddle();
    start();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
    EXPECT_FALSE(fs::exists(place_));
    EXPECT_FALSE(downloader_->hasResumeData());
}

TEST_F(ResumableDownloaderTest, StartsAnewAfterASecondCancel) {
    serve(halfThenRest());
    cutInTheMiddle();
    downloader_->cancel();
    EXPECT_FALSE(downloader_->hasResumeData());
    start();
    ASSERT_TRUE(deliveries_.waitForProgress());
    EXPECT_FALSE(server_->requests().at(1).header("Range"));
    downloader_->cancel();
    EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
}

TEST_F(ResumableDownloaderTest, CannotContinueWithoutAValidator) {
    serve([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n01234");
        exchange.hold();
    });
    cutInTheMiddle();
    EXPECT_FALSE(downloader_->hasResumeData());
}

TEST_F(ResumableDownloaderTest, LeavesTheHandlersOfACancelledStartApartFromThoseOfTheNext) {
    serve([](Exchange& exchange) {
        exchange.request.number == 1 ? exchange.hold() : exchange.answer(200, "content");
    });
    Deliveries first;
    downloader_->start(first.progress(), first.completion());
    ASSERT_TRUE(server_->waitForRequests(1));
    downloader_->cancel();
    start();
    EXPECT_THAT(first.waitForEnd(), StartsWith("failure "));
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(deliveries_.ends().size(), 1U);
}

TEST_F(ResumableDownloaderTest, KeepsItselfUntilItsEnd) {
    Event letGo;
    serve([&](Exchange& exchange) {
        EXPECT_TRUE(exchange.waitFor(letGo));
        exchange.answer(200, "content");
    });
    start();
    downloader_.reset();
    letGo.set();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
}

TEST_F(ResumableDownloaderTest, DeliversItsEndOnTheMainQueue) {
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    Event ended;
    downloader_->start([&](double) { EXPECT_FALSE(test_support::isOnMainQueue()); },
                       [&](const DownloadResult&) {
                           EXPECT_TRUE(test_support::isOnMainQueue());
                           ended.set();
                       });
    EXPECT_TRUE(ended.wait());
}

TEST_F(ResumableDownloaderTest, GoesOnWhenTheHostsHandlersThrow) {
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    Event ended;
    downloader_->start([](double) { throw std::runtime_error("broken progress"); },
                       [&](const DownloadResult&) {
                           ended.set();
                           throw std::runtime_error("broken completion");
                       });
    ASSERT_TRUE(ended.wait());
    ASSERT_TRUE(test_support::recordingLog().waitFor("callback threw: broken completion"));
    EXPECT_TRUE(logged("callback threw: broken progress"));
    EXPECT_EQ(contentOf(place_), "content");
}

TEST_F(ResumableDownloaderTest, RunsWithoutHandlers) {
    serve([](Exchange& exchange) { exchange.answer(200, "content"); });
    downloader_->start(nullptr, nullptr);
    ASSERT_TRUE(test_support::recordingLog().waitForBeginning("===moveTempFile=== "));
    drainMainQueue();
    EXPECT_EQ(contentOf(place_), "content");
}

/// Lets no file of this process grow beyond a size while it lives: a write beyond it fails as on a full disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t size) {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limited{size, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit before_{};
};

TEST_F(ResumableDownloaderTest, FailsWhenTheBytesCannotBeWritten) {
    serve([](Exchange& exchange) { exchange.answer(200, std::string(std::size_t{1} << 20, 'x')); });
    {
        const FullDisk full(4096);
        start();
        EXPECT_THAT(deliveries_.waitForEnd(), StartsWith("failure "));
    }
    EXPECT_EQ(deliveries_.ends().size(), 1U);
    EXPECT_FALSE(fs::exists(place_));
}

// The routes by themselves.

TEST_F(ResumableDownloaderTest, DeliversAnErrorAndThenTheMoveWhereBothAreThere) {
    Event letGo;
    serve([&](Exchange& exchange) { exchange.hold(); });
    start();
    const auto file = std::make_shared<TemporaryFile>(folder_.path());
    const auto path = file->path().string();
    std::ofstream(path) << "content";
    onMainQueue([&] {
        downloader_->completeTransfer(file, DownloadError{.text = "broken"});
        letGo.set();
    });
    ASSERT_TRUE(letGo.wait());
    EXPECT_THAT(deliveries_.ends(), ElementsAre("failure broken", succeeded()));
    EXPECT_EQ(contentOf(place_), "content");
    EXPECT_TRUE(logged("down file error = broken"));
    EXPECT_TRUE(logged("===moveTempFile=== " + path));
    downloader_->cancel();
}

TEST_F(ResumableDownloaderTest, DeliversNothingForAnEndWithoutErrorAndFile) {
    serve([](Exchange& exchange) { exchange.hold(); });
    start();
    downloader_->completeTransfer(nullptr, std::nullopt);
    EXPECT_THAT(deliveries_.ends(), IsEmpty());
    downloader_->cancel();
}

TEST_F(ResumableDownloaderTest, OnTheDelegateRouteMovesTheFileAndIsCompleted) {
    serve([](Exchange& exchange) { exchange.hold(); });
    start();
    std::ofstream(folder_ / "arrived") << "content";
    downloader_->didFinishDownloading(folder_ / "arrived");
    EXPECT_EQ(downloader_->currentState(), DownloadState::completed);
    EXPECT_THAT(deliveries_.ends(), ElementsAre(succeeded()));
    EXPECT_TRUE(logged("download didFinishDownloadingTo"));
    downloader_->didComplete(std::nullopt);
    EXPECT_TRUE(logged("download didCompleteWithError"));
    EXPECT_EQ(downloader_->currentState(), DownloadState::completed);
    EXPECT_EQ(deliveries_.ends().size(), 1U);
    downloader_->cancel();
}

TEST_F(ResumableDownloaderTest, OnTheDelegateRouteFailsWhenTheFileCannotBeMoved) {
    serve([](Exchange& exchange) { exchange.hold(); });
    start();
    downloader_->didFinishDownloading(folder_ / "missing");
    EXPECT_EQ(downloader_->currentState(), DownloadState::failed);
    EXPECT_THAT(deliveries_.ends(), ElementsAre(StartsWith("failure ")));
    downloader_->cancel();
}

TEST_F(ResumableDownloaderTest, OnTheDelegateRouteFailsWithAnyOtherError) {
    serve([](Exchange& exchange) { exchange.hold(); });
    start();
    downloader_->didComplete(DownloadError{.text = "broken"});
    EXPECT_EQ(downloader_->currentState(), DownloadState::failed);
    downloader_->didComplete(DownloadError{.kind = TransportError::Kind::cancelled, .text = "cancelled"});
    EXPECT_THAT(deliveries_.ends(), ElementsAre("failure broken", "failure cancelled"));
    downloader_->cancel();
}

TEST_F(ResumableDownloaderTest, OnTheDelegateRouteKeepsWhatACancelledTransferLeft) {
    serve(halfThenRest());
    const auto partial = std::make_shared<TemporaryFile>(test_support::temporaryFolder());
    std::ofstream(partial->path()) << "01234";
    downloader_->didComplete(DownloadError{.kind = TransportError::Kind::cancelled,
                                           .text = "cancelled",
                                           .resumeData = ResumeData{partial, "\"v1\""}});
    EXPECT_EQ(downloader_->currentState(), DownloadState::idle);
    EXPECT_TRUE(downloader_->hasResumeData());
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    EXPECT_EQ(contentOf(place_), "0123456789");
    EXPECT_EQ(server_->requests().at(0).header("Range"), "bytes=5-");
}

TEST_F(ResumableDownloaderTest, OnTheDelegateRouteStartsAgainAfterAnEnd) {
    serve([](Exchange& exchange) {
        exchange.request.number == 1 ? exchange.hold() : exchange.answer(200, "content");
    });
    Deliveries first;
    downloader_->start(first.progress(), first.completion());
    ASSERT_TRUE(server_->waitForRequests(1));
    downloader_->didComplete(DownloadError{.text = "broken"});
    start();
    EXPECT_EQ(deliveries_.waitForEnd(), succeeded());
    server_.reset();
    EXPECT_TRUE(eventually([&] { return first.ends().size() == 2; }));  // the first transfer itself ends too
}

TEST_F(ResumableDownloaderTest, GivesTheFractionAsTheDivisionGivesIt) {
    serve([](Exchange& exchange) { exchange.hold(); });
    start();
    downloader_->didWriteData(5, 10);
    downloader_->didWriteData(5, -1);
    downloader_->didWriteData(5, 0);
    downloader_->didWriteData(0, 0);
    const auto fractions = deliveries_.fractions();
    ASSERT_EQ(fractions.size(), 4U);
    EXPECT_EQ(fractions[0], 0.5);
    EXPECT_EQ(fractions[1], -5);
    EXPECT_TRUE(std::isinf(fractions[2]));
    EXPECT_TRUE(std::isnan(fractions[3]));
    EXPECT_TRUE(logged("download progress 0.5"));
    downloader_->cancel();
}

}  // namespace
}  // namespace baseapi
