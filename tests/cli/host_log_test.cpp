#include "cli/host_log.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <fstream>
#include <thread>
#include <vector>

#include "cli/problems.h"
#include "tests/support/file_content.h"
#include "tests/support/temporary_folder.h"

namespace quillbox {
namespace {

class HostLogTest : public testing::Test {
  protected:
    static void line(HostLog& log, std::string_view first, std::string_view second) {
        const std::array<std::string_view, 2> pieces{first, second};
        log.line(pieces);
    }
    std::string content() const { return test_support::contentOf(file_); }
    mode_t mode() const {
        struct stat status {};
        ::stat(file_.c_str(), &status);
        return status.st_mode & 0777;
    }

    test_support::TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "log";
};

TEST_F(HostLogTest, LinesAreAppendedAsTheyAre) {
    std::ofstream(file_) << "before\n";
    HostLog log(file_.string());
    line(log, "Request head = ", "Authorization : token");
    line(log, "响应数据: ", "");
    EXPECT_EQ(content(), "before\nRequest head = Authorization : token\n响应数据: \n");
}

TEST_F(HostLogTest, AnAnswerOfSeveralLinesIsOneLineOfTheLog) {
    HostLog log(file_.string());
    line(log, "响应数据: ", "<html>\r\nRequest head = forged\n</html>\n");
    line(log, "next", "");
    EXPECT_EQ(content(), "响应数据: <html>\\r\\nRequest head = forged\\n</html>\\n\nnext\n");
}

TEST_F(HostLogTest, ALineOfManyPiecesStaysWhole) {
    HostLog log(file_.string());
    const std::vector<std::string_view> pieces(5000, "piece ");
    log.line(pieces);
    EXPECT_EQ(content().size(), 5000 * 6 + 1);
}

TEST_F(HostLogTest, TheFileIsReadableByItsOwnerAlone) {
    { HostLog made(file_.string()); }
    EXPECT_EQ(mode(), 0600U);
    ASSERT_EQ(::chmod(file_.c_str(), 0644), 0);
    HostLog opened(file_.string());
    EXPECT_EQ(mode(), 0600U);
}

TEST_F(HostLogTest, AFileThatCannotBeOpenedCannotBeUsed) {
    EXPECT_THROW(HostLog(folder_.path().string()), UsageError);
    EXPECT_THROW(HostLog(""), UsageError);
    EXPECT_THROW(HostLog((folder_ / "missing/log").string()), UsageError);
}

TEST_F(HostLogTest, LinesOfManyThreadsStayWhole) {
    HostLog log(file_.string());
    const std::string body(20'000, 'x');
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int count = 0; count < 50; ++count) line(log, "Request Body: ", body);
        });
    for (auto& thread : threads) thread.join();
    std::ifstream stream(file_);
    int lines = 0;
    for (std::string text; std::getline(stream, text); ++lines) ASSERT_EQ(text, "Request Body: " + body);
    EXPECT_EQ(lines, 200);
}

TEST_F(HostLogTest, CausesAreReadWithAndWithoutADestination) {
    HostLog log;
    line(log, "UploadTask: IOException ", "Input/output error");
    EXPECT_EQ(log.uploadCause().cause(), "a part cannot be read: Input/output error");
}

}  // namespace
}  // namespace quillbox
