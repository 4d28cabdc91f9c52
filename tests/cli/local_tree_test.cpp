#include "cli/local_tree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "tests/support/temporary_folder.h"
#include "tests/support/without_root_rights.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class LocalTreeTest : public testing::Test {
  protected:
    fs::path make(const std::string& name, std::string_view content = "x") const {
        const auto file = folder_ / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }
    /// The labels without the folder's own path, "/" behind those of folders.
    std::vector<std::string> labels(const std::vector<LocalItem>& items) const {
        std::vector<std::string> all;
        for (const auto& item : items)
            all.push_back(item.label.substr(folder_.path().string().size()) + (item.isFolder ? "/" : ""));
        return all;
    }
    std::vector<LocalItem> listed() const { return listLocal({folder_.path().string()}); }

    test_support::TemporaryFolder folder_;
};

TEST_F(LocalTreeTest, AFolderStandsBeforeWhatIsInItInTheOrderOfBytes) {
    make("b");
    make("a/2");
    make("a/10");
    make("Z");
    fs::create_directory(folder_ / "empty");
    EXPECT_THAT(labels(listed()), ElementsAre("/", "/Z", "/a/", "/a/10", "/a/2", "/b", "/empty/"));
}

TEST_F(LocalTreeTest, PathsStandInTheOrderGivenAndKeepTheirSpelling) {
    const auto second = make("2").string();
    const auto first = make("./1").string();
    const auto items = listLocal({second, first, folder_.path().string() + "/missing"});
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[0].label, second);
    EXPECT_EQ(items[2].label, folder_.path().string() + "/missing");
    EXPECT_FALSE(items[2].isFolder);
}

TEST_F(LocalTreeTest, SizesAreThoseOfRegularFilesAlone) {
    make("five", "12345");
    ASSERT_EQ(::mkfifo((folder_ / "fifo").c_str(), 0600), 0);
    const auto items = listed();
    EXPECT_THAT(labels(items), ElementsAre("/", "/fifo", "/five"));
    EXPECT_EQ(items[0].size, 0);
    EXPECT_EQ(items[1].size, 0);
    EXPECT_EQ(items[2].size, 5);
}

TEST_F(LocalTreeTest, LinksAreFollowedButNotRoundAndRound) {
    make("real/file");
    fs::create_symlink("real", folder_ / "link");
    fs::create_symlink("..", folder_ / "real/up");
    fs::create_symlink("self", folder_ / "self");
    fs::create_symlink("nowhere", folder_ / "dangling");
    const auto items = listed();
    EXPECT_THAT(labels(items), ElementsAre("/", "/dangling", "/link/", "/link/file", "/link/up/", "/real/",
                                           "/real/file", "/real/up/", "/self"));
    EXPECT_EQ(items[4].problem, "it leads back to a folder above it");
    EXPECT_EQ(items[7].problem, "it leads back to a folder above it");
}

TEST_F(LocalTreeTest, AFolderThatCannotBeReadHasAProblem) {
    fs::create_directory(folder_ / "locked");
    ASSERT_EQ(::chmod((folder_ / "locked").c_str(), 0), 0);
    std::vector<LocalItem> items;
    test_support::withoutRootRights([&] { items = listed(); });
    ASSERT_THAT(labels(items), ElementsAre("/", "/locked/"));
    EXPECT_EQ(items[1].problem, "the folder cannot be read: Permission denied");
}

TEST_F(LocalTreeTest, NamesAreTheLastPiecesOfPaths) {
    make("inner/x");
    const auto path = folder_.path().string();
    EXPECT_EQ(listLocal({path + "/inner"})[0].name(), "inner");
    EXPECT_EQ(listLocal({path + "/inner/"})[0].name(), "inner");
    EXPECT_EQ(listLocal({path + "/inner/."})[0].name(), "inner");
    EXPECT_EQ(listLocal({path + "/inner/x"})[0].name(), "x");
}

TEST_F(LocalTreeTest, ADeepTreeIsListedWhole) {
    auto deep = folder_.path();
    for (int depth = 0; depth < 300; ++depth) deep /= "d";
    fs::create_directories(deep);
    EXPECT_EQ(listed().size(), 301U);
}

}  // namespace
}  // namespace quillbox
