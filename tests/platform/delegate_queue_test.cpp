#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>

#include <thread>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

std::string threadName() {
    char name[16] = {};
    pthread_getname_np(pthread_self(), name, sizeof name);
    return name;
}

class DelegateQueue : public testing::Test {
  protected:
    ScriptedServer server{[](Exchange& exchange) { exchange.answer(200, "ok"); }};
    std::shared_ptr<CurlTransport> transport = makeTransport();
};

TEST_F(DelegateQueue, RunsCompletionsAndProgress) {
    Event ended;
    std::vector<std::string> names;
    transport
        ->uploadTask(
            {.url = server.url(), .data = bufferOf("part")},
            [&](std::int64_t, std::int64_t) { names.push_back(threadName()); },
            [&](const std::optional<TransportError>&) {
                names.push_back(threadName());
                ended.set();
            })
        ->resume();
    ASSERT_TRUE(ended.wait());
    EXPECT_EQ(names, (std::vector<std::string>(2, "test-delegate")));
}

TEST_F(DelegateQueue, RunsTheCompletionOfARefusedRequestToo) {
    Event ended;
    const auto caller = std::this_thread::get_id();
    transport
        ->dataTask({.url = "/no-host", .verb = "GET"},
                   [&](const DataAnswer&) {
                       EXPECT_NE(std::this_thread::get_id(), caller);
                       ended.set();
                   })
        ->resume();
    EXPECT_TRUE(ended.wait());
}

TEST_F(DelegateQueue, IsNotStarvedByCompletionsThatBlock) {
    constexpr int kBlocked = 40;
    Event open;
    std::atomic<int> inside{0};
    Event allInside, allOut;
    for (int i = 0; i < kBlocked; ++i) {
        transport
            ->dataTask({.url = server.url(), .verb = "GET"},
                       [&](const DataAnswer&) {
                           if (++inside == kBlocked) allInside.set();
                           EXPECT_TRUE(open.wait());
                           if (--inside == 0) allOut.set();
                       })
            ->resume();
    }
    EXPECT_TRUE(allInside.wait());
    EXPECT_EQ(get(*transport, server.url()).body, "ok");
    open.set();
    EXPECT_TRUE(allOut.wait());
}

TEST_F(DelegateQueue, LetsACompletionWaitForAnotherRequest) {
    Event ended;
    transport
        ->dataTask({.url = server.url(), .verb = "GET"},
                   [&](const DataAnswer&) {
                       EXPECT_EQ(get(*transport, server.url()).body, "ok");
                       ended.set();
                   })
        ->resume();
    EXPECT_TRUE(ended.wait());
}

TEST_F(DelegateQueue, OutlivesACompletionThatThrows) {
    for (int i = 0; i < 100; ++i) {
        transport
            ->dataTask({.url = server.url(), .verb = "GET"},
                       [](const DataAnswer&) { throw std::runtime_error("completion"); })
            ->resume();
    }
    EXPECT_TRUE(server.waitForRequests(100));
    EXPECT_EQ(get(*transport, server.url()).body, "ok");
}

TEST_F(DelegateQueue, IsWhereWhatACompletionHoldsIsReleased) {
    Event released;
    std::string name;
    std::shared_ptr<int> held(new int(1), [&](int* number) {
        delete number;
        name = threadName();
        released.set();
    });
    auto task = transport->dataTask({.url = server.url(), .verb = "GET"}, [held](const DataAnswer&) {});
    held.reset();
    task->resume();
    ASSERT_TRUE(released.wait());
    EXPECT_EQ(name, "test-delegate");
}

TEST_F(DelegateQueue, CountsATransferUntilItsCompletionHasRun) {
    Event open, inside;
    EXPECT_EQ(transport->running(), 0u);
    const auto task = transport->dataTask({.url = server.url(), .verb = "GET"}, [&](const DataAnswer&) {
        inside.set();
        EXPECT_TRUE(open.wait());
    });
    EXPECT_EQ(transport->running(), 0u);
    task->resume();
    EXPECT_EQ(transport->running(), 1u);
    ASSERT_TRUE(inside.wait());
    EXPECT_EQ(transport->running(), 1u);
    open.set();
    while (transport->running() > 0) std::this_thread::yield();
}

TEST_F(DelegateQueue, RunsTheEndOfWhatTheTransportLeavesBehind) {
    ScriptedServer silent([](Exchange& exchange) { exchange.hold(); });
    std::vector<Awaited<DataAnswer>> answers(20);
    for (auto& answer : answers) {
        transport->dataTask({.url = silent.url(), .verb = "GET"}, answer.completion())->resume();
    }
    const auto late = transport->dataTask({.url = silent.url(), .verb = "GET"}, nullptr);
    ASSERT_TRUE(silent.waitForRequests(10));
    transport.reset();
    for (auto& answer : answers) EXPECT_EQ(answer.get().error->kind, TransportError::Kind::cancelled);
    late->resume();
    late->cancel();
}

TEST_F(DelegateQueue, LetsGoOfATaskThatHadHardlyBegunWhenTheTransportEnded) {
    for (int round = 0; round < 50; ++round) {
        Awaited<DataAnswer> answer;
        auto task = transport->dataTask({.url = server.url(), .verb = "GET"}, answer.completion());
        const std::weak_ptr<HttpTask> watched = task;
        std::exchange(task, nullptr)->resume();
        transport = makeTransport();
        answer.get();
        const auto deadline = std::chrono::steady_clock::now() + test_support::kPatience;
        while (!watched.expired()) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline);
            std::this_thread::yield();
        }
    }
}

TEST_F(DelegateQueue, LeavesSignalsToTheThreadsOfTheHost) {
    Event ended;
    transport
        ->dataTask({.url = server.url(), .verb = "GET"},
                   [&](const DataAnswer&) {
                       sigset_t blocked;
                       pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
                       for (const int signal :
                            {SIGINT, SIGTERM, SIGHUP, SIGUSR1, SIGPIPE, SIGALRM, SIGCHLD, SIGWINCH}) {
                           EXPECT_EQ(sigismember(&blocked, signal), 1) << signal;
                       }
                       EXPECT_EQ(sigismember(&blocked, SIGSEGV), 0);
                       ended.set();
                   })
        ->resume();
    EXPECT_TRUE(ended.wait());
}

}  // namespace
}  // namespace baseapi
