#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

#include "tests/platform/transport_fixture.h"

namespace baseapi {
namespace {

/// Runs the program with its standard output dropped and gives how it ended.
int statusOf(std::vector<std::string> words) {
    std::vector<char*> arguments;
    for (auto& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    EXPECT_EQ(::posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
}

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
        const int status =
            statusOf({LEAVE_MAIN_PROGRAM, server.url("/silent"), server.url("/endless"),
                      server.certificateFile(), folder.path(), std::to_string(round * round * 10)});
        EXPECT_EQ(status, 0) << "in round " << round;
    }
    EXPECT_GT(server.requestCount(), 0u);
}

}  // namespace
}  // namespace baseapi
