#include "baseapi/platform/standard_output_log.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

namespace baseapi {
namespace {

class Pipe {
  public:
    Pipe() { EXPECT_EQ(::pipe(ends_), 0); }
    ~Pipe() {
        closeReader();
        closeWriter();
    }
    int writer() const { return ends_[1]; }
    void closeWriter() { close(1); }
    void closeReader() { close(0); }
    std::string readAll() {
        std::string text;
        char bytes[4096];
        for (ssize_t got; (got = ::read(ends_[0], bytes, sizeof bytes)) > 0;) {
            text.append(bytes, static_cast<std::size_t>(got));
        }
        return text;
    }

  private:
    void close(int end) {
        if (ends_[end] >= 0) ::close(ends_[end]);
        ends_[end] = -1;
    }
    int ends_[2];
};

void write(LogSink& log, const std::vector<std::string_view>& pieces) {
    log.line(pieces);
}

TEST(StandardOutputLog, JoinsThePiecesOfALineAndEndsIt) {
    Pipe pipe;
    StandardOutputLog log(pipe.writer());
    write(log, {"Request head = ", "", "x", " : ", std::string_view("a\0b", 3)});
    write(log, {});
    write(log, {"二"});
    pipe.closeWriter();
    EXPECT_EQ(pipe.readAll(), std::string("Request head = x : a\0b\n\n二\n", 28));
}

TEST(StandardOutputLog, WritesALineOfAnyNumberOfPieces) {
    for (const std::size_t count : {62, 63, 64, 65, 126, 127, 128, 3000}) {
        Pipe pipe;
        StandardOutputLog log(pipe.writer());
        write(log, std::vector<std::string_view>(count, "ab"));
        pipe.closeWriter();
        EXPECT_EQ(pipe.readAll().size(), 2 * count + 1);
    }
}

class WholeLines : public testing::TestWithParam<int> {};

TEST_P(WholeLines, StayWholeWhereManyThreadsWriteIntoASmallPipe) {
    Pipe pipe;
    ::fcntl(pipe.writer(), F_SETFL, GetParam());
    StandardOutputLog log(pipe.writer());
    std::thread reader;
    std::string text;
    {
        std::vector<std::jthread> writers;
        for (char letter = 'a'; letter < 'e'; ++letter) {
            writers.emplace_back([&, letter] {
                const std::string piece(30'000, letter);
                for (int i = 0; i < 20; ++i) write(log, {piece, piece, piece});
            });
        }
        reader = std::thread([&] { text = pipe.readAll(); });
    }
    pipe.closeWriter();
    reader.join();

    std::size_t lines = 0;
    for (std::size_t start = 0; start < text.size(); ++lines) {
        const auto end = text.find('\n', start);
        ASSERT_EQ(text.substr(start, end - start), std::string(90'000, text[start]));
        start = end + 1;
    }
    EXPECT_EQ(lines, 80u);
}

INSTANTIATE_TEST_SUITE_P(StandardOutputLog, WholeLines, testing::Values(0, O_NONBLOCK),
                         [](const auto& instance) { return instance.param ? "NonBlocking" : "Blocking"; });

TEST(StandardOutputLog, DropsLinesWithoutASignalWhereNobodyReads) {
    struct sigaction before {};
    struct sigaction fatal {};
    fatal.sa_handler = SIG_DFL;
    sigaction(SIGPIPE, &fatal, &before);
    Pipe pipe;
    pipe.closeReader();
    StandardOutputLog log(pipe.writer());
    write(log, {"to nobody"});
    write(log, {"to nobody"});
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
    sigaction(SIGPIPE, &before, nullptr);
}

}  // namespace
}  // namespace baseapi
