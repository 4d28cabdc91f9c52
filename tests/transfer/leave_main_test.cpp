#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/support/child_program.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"

namespace baseapi {
namespace {

using test_support::Exchange;
using test_support::ScriptedServer;

/// A page of many files.
std::string listing() {
    std::string files;
    for (int i = 0; i < 200; ++i) {
        files += (i == 0 ? "" : ",") + std::string(R"({"id":"f","fileName":"Bild \u00e9","size":12,)") +
                 R"("owners":[{"displayName":"n","me":true}],"properties":{"a":"b"}})";
    }
    return R"({"code":0,"files":[)" + files + "]}";
}

std::string created(const std::string& service) {
    std::string parts;
    for (int number = 1; number <= 4; ++number) {
        parts += (number == 1 ? "" : ",") + std::string(R"({"partNumber":)") + std::to_string(number) +
                 R"(,"partSize":1048576,"partOffset":)" + std::to_string((number - 1) * 1048576) +
                 R"(,"uploadUrl":")" + service + "/part/" + std::to_string(number) + R"("})";
    }
    return R"({"code":0,"fileId":"f","rapidUpload":false,"exist":false,"multiParts":[)" + parts + "]}";
}

void sendWithoutEnd(Exchange& exchange) {
    exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 99999999999\r\n\r\n");
    const std::string piece(10'000, 'x');
    while (!exchange.closed()) exchange.send(piece);
}

TEST(LeavingMain, InTheMiddleOfUploadsDownloadsAndCallsIsSafe) {
    const auto page = listing();
    ScriptedServer server([&](Exchange& exchange) {
        const auto& target = exchange.request.target;
        if (target == "/endless") return sendWithoutEnd(exchange);
        if (target == "/part/2") return exchange.hold();
        if (target == "/quillbox/ose/v1/files/all") return exchange.answer(200, page);
        exchange.answer(
            200, target.ends_with("/create") ? created("http://" + *exchange.request.header("Host")) : "{}");
    });
    const test_support::TemporaryFolder folder;
    std::ofstream(folder / "content") << std::string(4 << 20, 'c');
    for (int round = 0; round < 60; ++round) {
        const int status = test_support::statusOfProgram(
            {LEAVE_MAIN_PROGRAM, server.url(), folder.path(), std::to_string(round * round * 40)});
        EXPECT_EQ(status, 0) << "in round " << round;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            if (entry.path().filename() != "content") std::filesystem::remove_all(entry.path());
        }
    }
    EXPECT_GT(server.requestCount(), 0U);
}

}  // namespace
}  // namespace baseapi
