#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using Kind = TransportError::Kind;

/// Time-outs of the tests: short enough to wait for, long enough for a busy machine to move within.
constexpr milliseconds kTimeout{600};

/// A listener that accepts nothing and whose queue is full: connecting to it never comes to an end.
class DeafListener {
  public:
    DeafListener() : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address_;
        ::bind(listener_, reinterpret_cast<sockaddr*>(&address_), size);
        ::listen(listener_, 0);
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address_), &size);
        for (auto& filler : fillers_) {
            filler = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
            ::connect(filler, reinterpret_cast<sockaddr*>(&address_), size);
        }
    }
    ~DeafListener() {
        for (const int filler : fillers_) ::close(filler);
        ::close(listener_);
    }

    std::string url() const { return "http://127.0.0.1:" + std::to_string(ntohs(address_.sin_port)) + "/"; }

  private:
    int listener_;
    sockaddr_in address_{};
    std::array<int, 4> fillers_{};
};

/// Runs a GET and says how long it took to fail.
steady_clock::duration timeToFail(const std::string& url, milliseconds idleTimeout) {
    const auto before = steady_clock::now();
    const auto answer = fetch(*makeTransport(), {.url = url, .verb = "GET", .idleTimeout = idleTimeout});
    const auto error = answer.error.value_or(TransportError{});
    EXPECT_EQ(error.kind, Kind::timedOut);
    EXPECT_EQ(error.text, "The request timed out");
    return steady_clock::now() - before;
}

TEST(TimeOut, EndsARequestThatIsNotAnswered) {
    ScriptedServer server([](Exchange& exchange) { exchange.hold(); });
    EXPECT_GE(timeToFail(server.url(), kTimeout), kTimeout);
    EXPECT_EQ(server.requestCount(), 1u);
}

TEST(TimeOut, CountsTheTimeToConnect) {
    const DeafListener listener;
    EXPECT_GE(timeToFail(listener.url(), kTimeout), kTimeout);
}

TEST(TimeOut, EndsAnAnswerThatStopsInItsHead) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nX:");
        exchange.hold();
    });
    timeToFail(server.url(), kTimeout);
}

TEST(TimeOut, EndsAnAnswerThatStopsInItsBody) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
        exchange.hold();
    });
    timeToFail(server.url(), kTimeout);
}

TEST(TimeOut, EndsOneTransferAndLeavesTheOthers) {
    Event open;
    ScriptedServer server([&](Exchange& exchange) {
        if (exchange.request.target == "/hold") return exchange.hold();
        exchange.waitFor(open);
        exchange.answer(200);
    });
    const auto transport = makeTransport();
    Awaited<DataAnswer> patient;
    transport->dataTask({.url = server.url("/patient"), .verb = "GET"}, patient.completion())->resume();
    const auto impatient =
        fetch(*transport, {.url = server.url("/hold"), .verb = "GET", .idleTimeout = milliseconds(100)});
    EXPECT_EQ(impatient.error->kind, Kind::timedOut);
    EXPECT_FALSE(patient.ready());
    open.set();
    EXPECT_FALSE(patient.get().error);
}

/// What keeps moving pauses much shorter than its time-out, which a busy machine must not make it exceed, and
/// takes longer than that on the whole.
constexpr milliseconds kLongTimeout{2'000};
constexpr milliseconds kPause{100};
constexpr int kPauses = 24;

TEST(TimeOut, SparesAnAnswerThatKeepsMoving) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 24\r\n\r\n");
        for (int i = 0; i < kPauses; ++i) {
            std::this_thread::sleep_for(kPause);
            exchange.send(".");
        }
    });
    const auto before = steady_clock::now();
    const auto answer =
        fetch(*makeTransport(), {.url = server.url(), .verb = "GET", .idleTimeout = kLongTimeout});
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.body, std::string(kPauses, '.'));
    EXPECT_GT(steady_clock::now() - before, kLongTimeout);
}

class SlowReader : public testing::TestWithParam<std::size_t> {};

TEST_P(SlowReader, IsSparedAsLongAsTheUploadKeepsMoving) {
    const auto size = GetParam();
    ScriptedServer server(
        [&](Exchange& exchange) {
            for (int i = 0; i < kPauses; ++i) {
                std::this_thread::sleep_for(kPause);
                exchange.readBody(size / kPauses);
            }
            exchange.readBody(size % kPauses);
            exchange.answer(200);
        },
        {.readBodies = false, .receiveBuffer = 64 << 10});
    const auto transport = makeTransport();
    Awaited<std::optional<TransportError>> upload;
    const auto before = steady_clock::now();
    transport
        ->uploadTask(
            {.url = server.url(), .data = bufferOf(std::string(size, 's')), .idleTimeout = kLongTimeout},
            nullptr, upload.completion())
        ->resume();
    const auto error = upload.get();
    EXPECT_FALSE(error) << error->text;
    EXPECT_GT(steady_clock::now() - before, kLongTimeout);
}

// The small one lies in the kernel's buffer as a whole from the start and leaves it slowly.
INSTANTIATE_TEST_SUITE_P(TimeOut, SlowReader, testing::Values(1'200'000, 12'000'000));

TEST(TimeOut, EndsAnUploadThatNobodyReads) {
    ScriptedServer server(
        [](Exchange& exchange) {
            Event never;
            exchange.waitFor(never);
        },
        {.readBodies = false});
    const auto transport = makeTransport();
    Awaited<std::optional<TransportError>> upload;
    transport
        ->uploadTask(
            {.url = server.url(), .data = bufferOf(std::string(20'000'000, 's')), .idleTimeout = kTimeout},
            nullptr, upload.completion())
        ->resume();
    const auto error = upload.get();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, Kind::timedOut);
}

TEST(TimeOut, EndsADownloadThatStops) {
    ScriptedServer server([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
        exchange.hold();
    });
    const TemporaryFolder folder;
    const auto transport = makeTransport();
    Awaited<DownloadAnswer> download;
    transport
        ->downloadTask({.url = server.url(), .partialFile = folder / "f", .idleTimeout = kTimeout}, nullptr,
                       download.completion())
        ->resume();
    const auto answer = download.get();
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->kind, Kind::timedOut);
    EXPECT_EQ(std::filesystem::file_size(folder / "f"), 5u);
}

TEST(Cancel, EndsARequestThatIsNotAnswered) {
    ScriptedServer server([](Exchange& exchange) { exchange.hold(); });
    const auto transport = makeTransport();
    Awaited<DataAnswer> answer;
    const auto task = transport->dataTask({.url = server.url(), .verb = "GET"}, answer.completion());
    task->resume();
    ASSERT_TRUE(server.waitForRequests(1));
    task->cancel();
    EXPECT_EQ(answer.get().error->kind, Kind::cancelled);
    EXPECT_TRUE(server.waitForEndedConnections(1));
}

TEST(Cancel, EndsARequestThatIsStillConnecting) {
    const DeafListener listener;
    const auto transport = makeTransport();
    Awaited<DataAnswer> answer;
    const auto task = transport->dataTask({.url = listener.url(), .verb = "GET"}, answer.completion());
    task->resume();
    task->cancel();
    EXPECT_EQ(answer.get().error->kind, Kind::cancelled);
}

TEST(Cancel, EndsARequestThatWasNotResumed) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200); });
    const auto transport = makeTransport();
    Awaited<DataAnswer> answer;
    const auto task = transport->dataTask({.url = server.url("/no"), .verb = "GET"}, answer.completion());
    task->cancel();
    EXPECT_EQ(answer.get().error->kind, Kind::cancelled);
    task->resume();
    get(*transport, server.url("/yes"));
    EXPECT_EQ(server.requestCount(), 1u);
}

TEST(Cancel, EndsARequestThatWaitsItsTurn) {
    ScriptedServer server([](Exchange& exchange) { exchange.hold(); });
    const auto transport = makeTransport({.transfersPerOrigin = 1});
    Awaited<DataAnswer> first, second;
    const auto running = transport->dataTask({.url = server.url("/1"), .verb = "GET"}, first.completion());
    const auto waiting = transport->dataTask({.url = server.url("/2"), .verb = "GET"}, second.completion());
    running->resume();
    ASSERT_TRUE(server.waitForRequests(1));
    waiting->resume();
    waiting->cancel();
    EXPECT_EQ(second.get().error->kind, Kind::cancelled);
    EXPECT_FALSE(first.ready());
    running->cancel();
    EXPECT_EQ(first.get().error->kind, Kind::cancelled);
    EXPECT_EQ(server.requestCount(), 1u);
}

TEST(Cancel, AfterTheEndChangesNothing) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, "whole"); });
    const auto transport = makeTransport();
    Awaited<DataAnswer> answer;
    const auto task = transport->dataTask({.url = server.url(), .verb = "GET"}, answer.completion());
    task->resume();
    EXPECT_EQ(answer.get().body, "whole");
    task->cancel();
    task->cancel();
    EXPECT_FALSE(get(*transport, server.url()).error);
}

TEST(Cancel, OfManyAtAnyMomentEndsEachOfThemOnce) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, std::string(20'000, 'x')); });
    const auto transport = makeTransport({.transfersPerOrigin = 8});
    constexpr int kTransfers = 300;
    std::atomic<int> ends{0};
    Event allEnded;
    std::vector<std::shared_ptr<HttpTask>> tasks;
    for (int i = 0; i < kTransfers; ++i) {
        tasks.push_back(
            transport->dataTask({.url = server.url(), .verb = "GET"}, [&](const DataAnswer& answer) {
                EXPECT_TRUE(answer.error ? answer.error->kind == Kind::cancelled
                                         : answer.body.size() == 20'000);
                if (++ends == kTransfers) allEnded.set();
            }));
    }
    std::jthread canceller([&] {
        for (auto& task : tasks) task->cancel();
    });
    for (auto& task : tasks) task->resume();
    EXPECT_TRUE(allEnded.wait());
}

}  // namespace
}  // namespace baseapi
