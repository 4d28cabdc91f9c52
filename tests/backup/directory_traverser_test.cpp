#include "baseapi/backup/directory_traverser.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"
#include "tests/support/test_platform.h"
#include "tests/support/without_root_rights.h"

namespace baseapi {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class DirectoryTraverserTest : public testing::Test {
  protected:
    void SetUp() override {
        test_support::recordingLog().clear();
        fs::create_directory(root_);
    }

    void file(const std::string& name, const std::string& content = "") const {
        std::ofstream(root_ / name, std::ios::binary) << content;
    }
    /// "KIND path size cloud" of each bean, the path as it is below the root's parent.
    std::vector<std::string> walk(const std::string& target = "/backup") const {
        return walk(root_.string(), target);
    }
    std::vector<std::string> walk(const std::string& root, const std::string& target) const {
        std::vector<std::string> lines;
        DirectoryTraverser::generateFileDetailBeans(root, target, [&](FileDetailBean&& bean) {
            lines.push_back(std::string(bean.isDirectory ? "folder " : "file ") +
                            fs::path(bean.filePath).lexically_relative(folder_.path()).string() + " " +
                            std::to_string(bean.fileSize) + " " + *bean.cloudPath);
        });
        return lines;
    }
    static bool logged(const std::string& line) { return test_support::recordingLog().contains(line); }

    test_support::TemporaryFolder folder_;
    const fs::path root_ = folder_ / "root";
};

TEST_F(DirectoryTraverserTest, FindsTheRootThenItsContentBreadthFirst) {
    fs::create_directories(root_ / "a" / "b");
    file("a/b/deep", "12345");
    file("a/one", "1");
    file("top", "12");
    const auto lines = walk();
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[0], "folder root 0 /backup");
    EXPECT_EQ(lines[1], "file root/top 2 /backup/root");
    EXPECT_EQ(lines[2], "folder root/a 0 /backup/root");
    EXPECT_EQ(lines[3], "file root/a/one 1 /backup/root/a");
    EXPECT_EQ(lines[4], "folder root/a/b 0 /backup/root/a");
    EXPECT_EQ(lines[5], "file root/a/b/deep 5 /backup/root/a/b");
}

TEST_F(DirectoryTraverserTest, FindsAnEmptyFolder) {
    EXPECT_THAT(walk(), ElementsAre("folder root 0 /backup"));
}

TEST_F(DirectoryTraverserTest, FindsHiddenFiles) {
    file(".hidden");
    EXPECT_THAT(walk(), ElementsAre("folder root 0 /backup", "file root/.hidden 0 /backup/root"));
}

TEST_F(DirectoryTraverserTest, FindsNothingWhereTheRootIsNoFolder) {
    file("plain");
    EXPECT_THAT(walk((root_ / "plain").string(), "/backup"), IsEmpty());
    EXPECT_TRUE(logged("generateFileDetailBeans is not exist or folder : " + (root_ / "plain").string()));
    EXPECT_THAT(walk((root_ / "none").string(), "/backup"), IsEmpty());
    EXPECT_TRUE(logged("generateFileDetailBeans is not exist or folder : " + (root_ / "none").string()));
}

TEST_F(DirectoryTraverserTest, ASlashAtTheEndOfTheTargetIsNotDoubledBelow) {
    file("plain");
    EXPECT_THAT(walk("/backup/"), ElementsAre("folder root 0 /backup/", "file root/plain 0 /backup/root"));
}

TEST_F(DirectoryTraverserTest, TheRootOfTheFileSystemIsCalledRoot) {
    EXPECT_EQ((FileDetailBean{"/", 0, true, nullptr}.fileName()), "root");
    EXPECT_EQ((FileDetailBean{"/home", 0, true, nullptr}.fileName()), "home");
}

TEST_F(DirectoryTraverserTest, FollowsLinks) {
    fs::create_directory(folder_ / "elsewhere");
    std::ofstream(folder_ / "elsewhere" / "far") << "123";
    fs::create_directory_symlink(folder_ / "elsewhere", root_ / "link");
    fs::create_symlink(folder_ / "elsewhere" / "far", root_ / "near");
    EXPECT_THAT(walk(), UnorderedElementsAre("folder root 0 /backup", "file root/near 3 /backup/root",
                                             "folder root/link 0 /backup/root",
                                             "file root/link/far 3 /backup/root/link"));
}

TEST_F(DirectoryTraverserTest, DoesNotEnterALinkToAFolderThatItHasComeThrough) {
    fs::create_directories(root_ / "a" / "b");
    fs::create_directory_symlink(root_, root_ / "a" / "b" / "back");
    fs::create_directory_symlink(".", root_ / "self");
    EXPECT_THAT(walk(), UnorderedElementsAre("folder root 0 /backup", "folder root/a 0 /backup/root",
                                             "folder root/a/b 0 /backup/root/a"));
    EXPECT_TRUE(logged("generateFileDetailBeans link leads back : " + (root_ / "a/b/back").string()));
    EXPECT_TRUE(logged("generateFileDetailBeans link leads back : " + (root_ / "self").string()));
    EXPECT_EQ(test_support::recordingLog().lines().size(), 2U);
}

TEST_F(DirectoryTraverserTest, EntersAFolderTwiceThatItReachesOnTwoWays) {
    fs::create_directory(folder_ / "shared");
    fs::create_directory_symlink(folder_ / "shared", root_ / "one");
    fs::create_directory_symlink(folder_ / "shared", root_ / "two");
    EXPECT_THAT(walk(), UnorderedElementsAre("folder root 0 /backup", "folder root/one 0 /backup/root",
                                             "folder root/two 0 /backup/root"));
}

TEST_F(DirectoryTraverserTest, SkipsALinkThatLeadsNowhere) {
    fs::create_symlink(root_ / "gone", root_ / "dangling");
    fs::create_symlink("ring", root_ / "ring");
    EXPECT_THAT(walk(), ElementsAre("folder root 0 /backup"));
    EXPECT_THAT(test_support::recordingLog().lines(), IsEmpty());
}

TEST_F(DirectoryTraverserTest, TakesAPipeLikeAFileAndDoesNotOpenIt) {
    ASSERT_EQ(::mkfifo((root_ / "pipe").c_str(), 0600), 0);
    EXPECT_THAT(walk(), ElementsAre("folder root 0 /backup", "file root/pipe 0 /backup/root"));
}

TEST_F(DirectoryTraverserTest, TakesNamesAsTheirBytes) {
    for (const auto* name : {"a\nb", "\"quoted\"", "中文", "\xff\xfe"}) file(name);
    EXPECT_THAT(walk(),
                UnorderedElementsAre("folder root 0 /backup", "file root/a\nb 0 /backup/root",
                                     "file root/\"quoted\" 0 /backup/root", "file root/中文 0 /backup/root",
                                     "file root/\xff\xfe 0 /backup/root"));
}

TEST_F(DirectoryTraverserTest, GoesOnBehindAFolderThatItMayNotList) {
    fs::create_directory(root_ / "locked");
    fs::create_directory(root_ / "open");
    fs::permissions(root_ / "locked", fs::perms::none);
    fs::permissions(folder_.path(), fs::perms::all);
    test_support::withoutRootRights([&] {
        EXPECT_THAT(walk(), UnorderedElementsAre("folder root 0 /backup", "folder root/locked 0 /backup/root",
                                                 "folder root/open 0 /backup/root"));
    });
    EXPECT_TRUE(logged("generateFileDetailBeans path failed : " + (root_ / "locked").string() +
                       ", error: Permission denied"));
    fs::permissions(root_ / "locked", fs::perms::owner_all);
}

TEST_F(DirectoryTraverserTest, LeavesAFolderWhoseEntriesItMayNotLookAt) {
    fs::create_directory(root_ / "dark");
    file("dark/unseen");
    fs::permissions(root_ / "dark",
                    fs::perms::all ^ fs::perms::owner_exec ^ fs::perms::group_exec ^ fs::perms::others_exec);
    fs::permissions(folder_.path(), fs::perms::all);
    test_support::withoutRootRights([&] {
        EXPECT_THAT(walk(), ElementsAre("folder root 0 /backup", "folder root/dark 0 /backup/root"));
    });
    EXPECT_TRUE(logged("generateFileDetailBeans path failed : " + (root_ / "dark").string() +
                       ", error: Permission denied"));
    fs::permissions(root_ / "dark", fs::perms::owner_all);
}

}  // namespace
}  // namespace baseapi
