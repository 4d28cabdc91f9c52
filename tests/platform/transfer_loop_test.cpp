#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "baseapi/platform/thread.h"
#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

using namespace std::chrono_literals;

/// Threads that use one transport at the same time: of the library, which bring their requests on the way
/// themselves, and of a host, for which the network thread does.
class Threads {
  public:
    explicit Threads(const std::function<void()>& work) {
        for (int i = 0; i < 4; ++i) threads_.push_back(startThread("test", work));
        for (int i = 0; i < 2; ++i) threads_.emplace_back(work);
    }
    ~Threads() { join(); }
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;

    void join() {
        for (auto& thread : threads_)
            if (thread.joinable()) thread.join();
    }

  private:
    std::vector<std::thread> threads_;
};

TEST(TransferLoop, EndsEachTransferOnceWhoeverBeginsIt) {
    constexpr int each = 60;
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, "ok"); });
    const auto transport = makeTransport();
    std::atomic<int> ended = 0;
    std::atomic<int> succeeded = 0;
    Event allEnded;
    Threads threads([&] {
        for (int i = 0; i < each; ++i) {
            const auto task =
                transport->dataTask({.url = server.url(), .verb = "GET"}, [&](const DataAnswer& answer) {
                    if (!answer.error) ++succeeded;
                    if (++ended == 6 * each) allEnded.set();
                });
            task->resume();
            if (i % 5 == 0) task->cancel();
        }
    });
    EXPECT_TRUE(allEnded.wait());
    threads.join();
    EXPECT_GE(succeeded, 6 * each * 4 / 5);
    while (transport->running() > 0) std::this_thread::yield();
    EXPECT_EQ(ended, 6 * each);
}

TEST(TransferLoop, EndsTransfersThatBeginWhileItStops) {
    ScriptedServer server([](Exchange& exchange) { exchange.answer(200, "ok"); });
    for (int round = 0; round < 10; ++round) {
        std::atomic<int> begun = 0;
        std::atomic<int> ended = 0;
        auto transport = makeTransport();
        Event first;
        const std::weak_ptr<CurlTransport> used = transport;
        Threads threads([&] {
            for (int i = 0; i < 200; ++i) {
                const auto held = used.lock();
                if (!held) return;
                ++begun;
                held->dataTask({.url = server.url(), .verb = "GET"},
                               [&](const DataAnswer&) {
                                   first.set();
                                   ++ended;
                               })
                    ->resume();
            }
        });
        ASSERT_TRUE(first.wait());
        transport.reset();
        threads.join();
        while (ended < begun) std::this_thread::yield();
        EXPECT_EQ(ended, begun);
    }
}

TEST(TransferLoop, WakesForTheTimeOutOfATransferThatALibraryThreadBegan) {
    Event letGo;
    ScriptedServer server([&](Exchange& exchange) { EXPECT_TRUE(exchange.waitFor(letGo)); });
    const auto transport = makeTransport();
    Awaited<DataAnswer> answer;
    startThread("test", [&] {
        transport->dataTask({.url = server.url(), .verb = "GET", .idleTimeout = 100ms}, answer.completion())
            ->resume();
    }).join();
    const auto error = answer.get().error;
    letGo.set();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, TransportError::Kind::timedOut);
}

}  // namespace
}  // namespace baseapi
