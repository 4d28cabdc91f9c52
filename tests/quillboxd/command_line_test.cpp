#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

#include "tests/quillboxd/service_fixture.h"
#include "tests/support/server_certificate.h"
#include "tests/support/temporary_folder.h"

namespace quillboxd_test {
namespace {

using test_support::QuillboxdRun;
using test_support::runQuillboxd;
using test_support::TemporaryFolder;
using testing::HasSubstr;
using testing::StartsWith;

void expectUnusable(const std::vector<std::string>& arguments, const std::string& words) {
    const auto run = runQuillboxd(arguments);
    EXPECT_EQ(run.exitStatus, 2) << run.output;
    EXPECT_THAT(run.output, StartsWith("quillboxd: "));
    EXPECT_THAT(run.output, HasSubstr(words));
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 1) << run.output;
}

TEST(CommandLineTest, OneOfDataAndMemoryIsNeeded) {
    expectUnusable({}, "--data");
    expectUnusable({"--memory", "--data", "/tmp/x"}, "--data");
    expectUnusable({"--data", ""}, "--data");
}

TEST(CommandLineTest, OptionsThatMakeNoSenseAreRefused) {
    expectUnusable({"--memory", "--port", "65536"}, "--port");
    expectUnusable({"--memory", "--port", "http"}, "--port");
    expectUnusable({"--memory", "--quota", "-1"}, "--quota");
    expectUnusable({"--memory", "--quota", "much"}, "--quota");
    expectUnusable({"--memory", "--nonsense"}, "--nonsense");
    expectUnusable({"--memory", "--tls", "only-one"}, "--tls");
}

TEST(CommandLineTest, HelpAndVersionAreNoErrors) {
    EXPECT_EQ(runQuillboxd({"--help"}).exitStatus, 0);
    EXPECT_THAT(runQuillboxd({"--help"}).output, HasSubstr("--port-file"));
    EXPECT_EQ(runQuillboxd({"--version"}).exitStatus, 0);
}

TEST(CommandLineTest, ATakenPortIsRefused) {
    const QuillboxdProcess first(QuillboxdProcess::Storage::memory);
    expectUnusable({"--memory", "--port", std::to_string(first.port())}, "cannot be used");
}

TEST(CommandLineTest, ADataFolderInUseIsRefused) {
    const QuillboxdProcess first;
    expectUnusable({"--data", first.dataFolder()}, "in use by another quillboxd");
}

TEST(CommandLineTest, ADataFolderThatCannotBeUsedIsRefused) {
    const TemporaryFolder folder;
    std::ofstream(folder / "file") << "not a folder";
    expectUnusable({"--data", folder / "file"}, "file");
    std::filesystem::create_directory(folder / "data");
    std::ofstream(folder / "data" / "quillboxd.sqlite") << std::string(5000, 'x');
    expectUnusable({"--data", folder / "data"}, "not a database");
}

TEST(CommandLineTest, APortFileThatCannotBeWrittenIsRefused) {
    expectUnusable({"--memory", "--port-file", "/nonexistent/folder/port"}, "/nonexistent/folder/port");
}

TEST(CommandLineTest, ThePortFileHasThePortOnceItAnswers) {
    const TemporaryFolder folder;
    const QuillboxdProcess process(QuillboxdProcess::Storage::memory,
                                   {"--port-file", (folder / "port").string()});
    int port = 0;
    std::ifstream(folder / "port") >> port;
    EXPECT_EQ(port, process.port());
}

TEST(CommandLineTest, ACommandFindsTheServiceAndGivesItsOwnStatus) {
    const auto run =
        runQuillboxd({"--memory", "--", "sh", "-c",
                      "echo heard; curl -s --data {} $QUILLBOX_HOST/_dev/reset || exit 9; exit 5"});
    EXPECT_EQ(run.exitStatus, 5);
    EXPECT_THAT(run.output, StartsWith("heard"));
}

TEST(CommandLineTest, ACommandThatASignalEndsGivesTheStatusOfAShell) {
    EXPECT_EQ(runQuillboxd({"--memory", "--", "sh", "-c", "kill -9 $$"}).exitStatus, 128 + 9);
}

TEST(CommandLineTest, ACommandThatCannotBeRunGivesTheStatusOfAShell) {
    EXPECT_EQ(runQuillboxd({"--memory", "--", "/nonexistent/program"}).exitStatus, 127);
}

TEST(CommandLineTest, ACommandLineWithoutItsCommandIsRefused) {
    expectUnusable({"--memory", "--"}, "needs a command");
}

TEST(CommandLineTest, ACommandGetsTheSignalsThatTheServiceBlocks) {
    EXPECT_EQ(runQuillboxd({"--memory", "--", "sh", "-c", "kill -TERM $$; exit 3"}).exitStatus, 128 + 15);
}

TEST(CommandLineTest, ACommandDiesWithTheService) {
    int output[2];
    ASSERT_EQ(::pipe2(output, O_CLOEXEC), 0);
    baseapi::testkit::ChildProcess service(
        {BASEAPI_BIN_DIR "/quillboxd", "--memory", "--", "sh", "-c", "echo x; exec sleep 600"}, output[1],
        STDERR_FILENO);
    ::close(output[1]);
    char text[8];
    ASSERT_EQ(::read(output[0], text, sizeof text), 2);
    service.end(SIGKILL);
    EXPECT_EQ(::read(output[0], text, sizeof text), 0) << "somebody can still write";
    ::close(output[0]);
}

TEST(CommandLineTest, ACertificateThatCannotBeReadIsRefused) {
    expectUnusable({"--memory", "--tls", "/nonexistent/cert", "/nonexistent/key"}, "/nonexistent/cert");
}

TEST(CommandLineTest, SigtermEndsItCleanlyAlsoInMidStall) {
    QuillboxdProcess process(QuillboxdProcess::Storage::memory);
    const Client client(process.url());
    send("POST", process.url() + "/_dev/faults", {},
         R"({"path":"/quillbox/ose/v1/access","kind":"stall","seconds":3600})");
    std::thread stalled([&] { client.get("/access"); });
    const auto hits = [&] {
        return send("GET", process.url() + "/_dev/faults").object().at("faults").at(0).at("hits").as_int64();
    };
    while (hits() == 0) std::this_thread::yield();
    EXPECT_EQ(process.terminate(), 0);
    stalled.join();
}

TEST(CommandLineTest, VerboseTellsEachRequestWithoutTheToken) {
    const QuillboxdProcess process(QuillboxdProcess::Storage::memory, {"--verbose"});
    const Client client(process.url());
    client.get("/files/path?fileId=" + client.token());
    // The line follows the answer: another answer on a later connection may overtake it, the end does not.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (process.output().find("/files/path") == std::string::npos &&
           std::chrono::steady_clock::now() < deadline) {
        std::this_thread::yield();
    }
    EXPECT_THAT(process.output(), HasSubstr("GET /quillbox/ose/v1/files/path?fileId=*** 404"));
    EXPECT_THAT(process.output(), testing::Not(HasSubstr(client.token())));
}

TEST(CommandLineTest, ItListensOnTheLoopbackAddressAlone) {
    const QuillboxdProcess process(QuillboxdProcess::Storage::memory);
    std::ifstream table("/proc/" + std::to_string(process.pid()) + "/net/tcp");
    char port[16];
    std::snprintf(port, sizeof port, ":%04X ", process.port());
    std::vector<std::string> listening;
    for (std::string line; std::getline(table, line);) {
        if (line.find(port) < 20 && line.find(" 0A ") != line.npos) listening.push_back(line);
    }
    ASSERT_EQ(listening.size(), 1u);
    EXPECT_THAT(listening[0], HasSubstr("0100007F:"));
}

TEST(CommandLineTest, ItServesTls) {
    const test_support::ServerCertificate certificate;
    const QuillboxdProcess process(QuillboxdProcess::Storage::memory,
                                   {"--tls", certificate.pemFile(), certificate.keyFile()});
    const Client client(process.url());
    const auto bytes = someBytes(1'000'000);
    const auto id = client.upload("a.bin", bytes, 300'000);
    EXPECT_THAT(client.contentUrl(id), StartsWith("https://127.0.0.1:"));
    EXPECT_EQ(client.download(id), bytes);
    EXPECT_EQ(send("GET", client.contentUrl(id), {"Range: bytes=299990-300009"}).body,
              bytes.substr(299'990, 20));
    EXPECT_THAT(exchangeRaw(process.port(), "GET / HTTP/1.1\r\n\r\n"), testing::Not(HasSubstr("HTTP/1.1 ")));
}

}  // namespace
}  // namespace quillboxd_test
