#include "hostkit/file_walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <fstream>

#include "tests/support/temporary_folder.h"
#include "tests/support/without_root_rights.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class FileWalk : public testing::Test {
  protected:
    void write(const fs::path& name) const {
        fs::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name) << "x";
    }
    void walk() {
        hostkit::walkFiles(folder_.path(), {[this](const fs::path& file) { files_.push_back(below(file)); },
                                            [this](const fs::path& folder, const std::string& why) {
                                                unreadable_.push_back(below(folder) + ": " + why);
                                            }});
    }
    std::string below(const fs::path& path) const { return path.lexically_relative(folder_.path()); }

    test_support::TemporaryFolder folder_;
    std::vector<std::string> files_;
    std::vector<std::string> unreadable_;
};

TEST_F(FileWalk, VisitsFilesAtAnyDepthAndHiddenOnesToo) {
    for (const auto* name : {"a", "b/c", "b/d/e", ".f/.g"}) write(name);
    fs::create_directory(folder_ / "empty");
    walk();
    EXPECT_THAT(files_, UnorderedElementsAre("a", "b/c", "b/d/e", ".f/.g"));
    EXPECT_THAT(unreadable_, IsEmpty());
}

TEST_F(FileWalk, VisitsWhatIsNoRegularFileWithoutOpeningIt) {
    ASSERT_EQ(::mkfifo((folder_ / "fifo").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder_ / "dangling");
    fs::create_symlink("self", folder_ / "self");
    walk();
    EXPECT_THAT(files_, UnorderedElementsAre("fifo", "dangling", "self"));
}

TEST_F(FileWalk, FollowsLinksAndLeavesALoopOfThem) {
    write("a/file");
    fs::create_directory_symlink("a", folder_ / "again");
    fs::create_directory_symlink("..", folder_ / "a" / "up");
    fs::create_directory_symlink(".", folder_ / "a" / "here");
    walk();
    EXPECT_THAT(files_, UnorderedElementsAre("a/file", "again/file"));
    EXPECT_THAT(unreadable_, IsEmpty());
}

TEST_F(FileWalk, TellsOfAFolderThatMayNotBeReadAndGoesOn) {
    write("closed/file");
    write("open/file");
    ::chmod((folder_ / "closed").c_str(), 0);
    test_support::withoutRootRights([&] { walk(); });
    ::chmod((folder_ / "closed").c_str(), 0700);
    EXPECT_THAT(files_, ElementsAre("open/file"));
    EXPECT_THAT(unreadable_, ElementsAre("closed: Permission denied"));
}

TEST_F(FileWalk, TellsOfARootThatIsNotThere) {
    hostkit::walkFiles(folder_ / "missing",
                       {[](const auto&) { ADD_FAILURE(); },
                        [this](const auto&, const auto& why) { unreadable_.push_back(why); }});
    EXPECT_THAT(unreadable_, ElementsAre("No such file or directory"));
}

TEST_F(FileWalk, GoesDeeperThanAProcessMayHaveFilesOpen) {
    std::string deep;
    for (int level = 0; level < 200; ++level) deep += "d/";
    write(deep + "file");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few{100, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    walk();
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_THAT(files_, ElementsAre(deep + "file"));
}

}  // namespace
