#include "cli/token_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <mutex>
#include <string>
#include <vector>

#include "cli/problems.h"
#include "tests/support/event.h"
#include "tests/support/temporary_folder.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

class TokenFileTest : public testing::Test {
  protected:
    void write(const std::string& name, const std::string& content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }
    /// Whether `change` makes the watcher hand over `token`.
    bool hands(const std::string& token, const std::function<void()>& change) {
        test_support::Event handed;
        TokenFile file(folder_ / "token", [&](const std::string& given) {
            if (given == token) handed.set();
        });
        change();
        return handed.wait();
    }

    test_support::TemporaryFolder folder_;
};

TEST_F(TokenFileTest, TheTokenIsTheFirstLine) {
    write("token", "abc\nsecond line\n");
    EXPECT_EQ(firstLine(folder_ / "token"), "abc");
    write("token", "abc");
    EXPECT_EQ(firstLine(folder_ / "token"), "abc");
    write("token", "abc\r\n");
    EXPECT_EQ(firstLine(folder_ / "token"), "abc");
    write("token", "");
    EXPECT_EQ(firstLine(folder_ / "token"), "");
    EXPECT_EQ(firstLine(folder_ / "missing"), std::nullopt);
    EXPECT_EQ(firstLine(folder_.path()), std::nullopt);
}

TEST_F(TokenFileTest, AFileThatCannotBeReadAtTheStartCannotBeUsed) {
    EXPECT_THROW(TokenFile(folder_ / "missing", [](const auto&) {}), UsageError);
    EXPECT_THROW(TokenFile(folder_.path(), [](const auto&) {}), UsageError);
}

TEST_F(TokenFileTest, TheTokenOfTheStartIsHandedOverAtOnce) {
    write("token", "first");
    std::string given;
    const TokenFile file(folder_ / "token", [&](const std::string& token) { given = token; });
    EXPECT_EQ(given, "first");
}

TEST_F(TokenFileTest, AFileThatIsEmptyForAWhileLeavesTheTokenInPlace) {
    write("token", "first");
    std::vector<std::string> given;
    test_support::Event third;
    {
        TokenFile file(folder_ / "token", [&](const std::string& token) {
            given.push_back(token);
            if (token == "third") third.set();
        });
        write("token", "");
        write("beside", "another file of the folder is closed");
        write("token", "third");
        EXPECT_TRUE(third.wait());
    }
    EXPECT_EQ(given, (std::vector<std::string>{"first", "third"}));
}

TEST_F(TokenFileTest, AChangeIsHandedOver) {
    write("token", "first");
    EXPECT_TRUE(hands("second", [&] { write("token", "second\n"); }));
}

TEST_F(TokenFileTest, AFileThatIsPutInItsPlaceIsHandedOver) {
    write("token", "first");
    EXPECT_TRUE(hands("second", [&] {
        write("draft", "second\n");
        fs::rename(folder_ / "draft", folder_ / "token");
    }));
}

TEST_F(TokenFileTest, AChangeBehindALinkIsHandedOver) {
    fs::create_directory(folder_ / "elsewhere");
    write("elsewhere/real", "first");
    fs::create_symlink("elsewhere/real", folder_ / "token");
    EXPECT_TRUE(hands("second", [&] { write("elsewhere/real", "second"); }));
}

TEST_F(TokenFileTest, AFileThatVanishesLeavesTheTokenAndMayComeBack) {
    write("token", "first");
    EXPECT_TRUE(hands("third", [&] {
        fs::remove(folder_ / "token");
        write("token", "third");
    }));
}

}  // namespace
}  // namespace quillbox
