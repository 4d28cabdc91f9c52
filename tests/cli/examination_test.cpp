#include "cli/examination.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace quillbox {
namespace {

using State = Finding::State;

TEST(Examination, QueuesWithoutWidthAreAWarning) {
    EXPECT_EQ(examineProcessors(2, 2).state, State::fine);
    EXPECT_EQ(examineProcessors(0, 0).state, State::warning);
    EXPECT_NE(examineProcessors(0, 0).remedy, "");
}

TEST(Examination, AFolderThatCannotBeWrittenIsAProblem) {
    const test_support::TemporaryFolder folder;
    EXPECT_EQ(examineFolder("state", folder / "made/here").state, State::fine);
    EXPECT_TRUE(std::filesystem::is_empty(folder / "made/here"));
    EXPECT_EQ(examineFolder("state", "/proc/nothing").state, State::problem);
}

TEST(Examination, AClockThatCannotBeRightIsAProblem) {
    EXPECT_EQ(examineClock(0).state, State::problem);
    EXPECT_EQ(examineClock(1'800'000'000).state, State::fine);
}

TEST(Examination, TlsIsNeededOnTheWayToAnotherMachine) {
    EXPECT_EQ(examineTls("https://cloud.example.org", std::nullopt).state, State::fine);
    EXPECT_EQ(examineTls("https://cloud.example.org", "SSL certificate problem").state, State::problem);
    EXPECT_EQ(examineTls("https://cloud.example.org", "Could not connect to server").state, State::warning);
    EXPECT_EQ(examineTls("http://cloud.example.org", std::nullopt).state, State::warning);
    EXPECT_EQ(examineTls("http://127.0.0.1:8080", std::nullopt).state, State::fine);
    EXPECT_EQ(examineTls("http://[::1]:8080", std::nullopt).state, State::fine);
}

TEST(ServerName, ItIsWhatStandsBetweenSchemeAndPort) {
    EXPECT_EQ(serverName("https://cloud.example.org"), "cloud.example.org");
    EXPECT_EQ(serverName("http://127.0.0.1:8080/base"), "127.0.0.1");
    EXPECT_EQ(serverName("http://user@[::1]:80"), "::1");
    EXPECT_EQ(serverName("cloud.example.org"), std::nullopt);
    EXPECT_EQ(serverName("ftp://x"), std::nullopt);
    EXPECT_EQ(serverName("https://"), std::nullopt);
    EXPECT_EQ(serverName(""), std::nullopt);
}

}  // namespace
}  // namespace quillbox
