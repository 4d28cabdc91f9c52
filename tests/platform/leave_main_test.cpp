#include <gtest/gtest.h>

#include "tests/platform/transport_fixture.h"
#include "tests/support/child_program.h"

namespace baseapi {
namespace {

TEST(LeavingMain, InTheMiddleOfTransfersIsSafe) {
    ScriptedServer server(
        [](Exchange& exchange) {
            if (exchange.request.target == "/silent") return exchange.hold();
            exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 99999999999\r\n\r\n");
            const std::string piece(10'000, 'x');
            while (!exchange.closed()) exchange.send(piece);
        },
        {.tls = true});
    const TemporaryFolder folder;
    // Longer and longer, until requests are under way also on a slow machine.
    const auto isEnough = [&](double microseconds) {
        return microseconds > 40e3 && (server.requestCount() > 0 || microseconds > 30e6);
    };
    for (double wait = 10; !isEnough(wait); wait *= 1.15) {
        const auto microseconds = std::to_string(static_cast<int>(wait));
        const int status =
            test_support::statusOfProgram({LEAVE_MAIN_PROGRAM, server.url("/silent"), server.url("/endless"),
                                           server.certificateFile(), folder.path(), microseconds});
        EXPECT_EQ(status, 0) << "after " << microseconds << " microseconds";
    }
    EXPECT_GT(server.requestCount(), 0u);
}

}  // namespace
}  // namespace baseapi
