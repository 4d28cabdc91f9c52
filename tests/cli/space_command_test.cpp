#include <pty.h>
#include <unistd.h>

#include "tests/cli/cloud_test.h"
#include "tests/support/scripted_server.h"

namespace quillbox_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// The other side of a terminal.
class Terminal {
  public:
    Terminal() {
        char name[64];
        ::openpty(&master_, &slave_, name, nullptr, nullptr);
        name_ = name;
    }
    ~Terminal() {
        ::close(master_);
        ::close(slave_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    const std::string& name() const { return name_; }
    /// What has been written to it; something must have been.
    std::string text() const {
        char bytes[4096];
        const auto count = ::read(master_, bytes, sizeof bytes);
        return count > 0 ? std::string(bytes, static_cast<std::size_t>(count)) : std::string();
    }

  private:
    int master_ = -1;
    int slave_ = -1;
    std::string name_;
};

class SpaceCommandTest : public CloudTest {};

TEST_F(SpaceCommandTest, UsedAndFreeAreTold) {
    make("a.txt", "hello");
    json({"upload", "a.txt"});
    const auto people = text({"space"});
    EXPECT_EQ(people.status, 0) << people.error;
    EXPECT_EQ(people.output, "5 B used, 10.7 GB free of 10.7 GB\n");
    EXPECT_THAT(json({"space"}).lines,
                ElementsAre(R"({"event":"space","used":5,"free":10737418235,"capacity":10737418240})"));
}

TEST_F(SpaceCommandTest, ATerminalGetsABar) {
    const Terminal terminal;
    auto settings = signedIn();
    settings.environment["TERM"] = "xterm";
    settings.standardOutput = terminal.name();
    EXPECT_EQ(run({"space"}, settings).status, 0);
    EXPECT_EQ(terminal.text(), "░░░░░░░░░░░░░░░░░░░░░░░░  0 B used, 10.7 GB free of 10.7 GB\r\n");
}

TEST_F(SpaceCommandTest, ARefusalIsAFailure) {
    auto stranger = settings();
    stranger.environment["QUILLBOX_TOKEN"] = "unknown";
    const auto result = run({"space"}, stranger);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, StartsWith("quillbox: the service refused the space: 13000401"));
}

/// What the command says of an answer.
Outcome spaceOf(const std::string& answer, const std::string& output = {}) {
    const test_support::ScriptedServer server(
        [&](test_support::Exchange& exchange) { exchange.answer(200, answer); });
    RunSettings settings;
    settings.environment["TERM"] = "xterm";
    settings.standardOutput = output;
    return run({"space", "--host", server.url(), "--token", "t"}, settings);
}

TEST(SpaceAnswerTest, MoreThanThereIsRoomForLeavesNothingFree) {
    const std::string answer = R"({"code":0,"data":{"capacity":4000,"spaceUsed":5000}})";
    EXPECT_EQ(spaceOf(answer).output, "5.0 kB used, 0 B free of 4.0 kB\n");
    const Terminal terminal;
    EXPECT_EQ(spaceOf(answer, terminal.name()).status, 0);
    EXPECT_THAT(terminal.text(), StartsWith("████████████████████████  5.0 kB used"));
}

TEST(SpaceAnswerTest, HalfOfItFillsHalfOfTheBar) {
    const Terminal terminal;
    spaceOf(R"({"code":0,"data":{"capacity":4000,"spaceUsed":2000}})", terminal.name());
    EXPECT_THAT(terminal.text(), StartsWith("████████████░░░░░░░░░░░░  2.0 kB used"));
}

TEST(SpaceAnswerTest, AnAnswerThatDoesNotTellItIsAFailure) {
    for (const auto* answer : {R"({"code":0})", R"({"code":0,"data":{"capacity":1}})"}) {
        const auto result = spaceOf(answer);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.error, HasSubstr("the answer does not tell it"));
    }
}

}  // namespace
}  // namespace quillbox_test
