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
    for (int round = 0; round < 60; ++round) {
        const int status = test_support::statusOfProgram({LEAVE_MAIN_PROGRAM, server.url("/silent"),
                                                          server.url("/endless"), server.certificateFile(),
                                                          folder.path(), std::to_string(round * round * 10)});
        EXPECT_EQ(status, 0) << "in round " << round;
    }
    EXPECT_GT(server.requestCount(), 0u);
}

}  // namespace
}  // namespace baseapi
