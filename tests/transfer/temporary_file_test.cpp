#include "baseapi/transfer/temporary_file.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>
#include <system_error>

#include "tests/support/file_content.h"
#include "tests/support/temporary_folder.h"

namespace baseapi {
namespace fs = std::filesystem;
namespace {

using test_support::contentOf;

void write(const fs::path& path, const std::string& content) {
    std::ofstream(path) << content;
}

TEST(TemporaryFile, LiesInAFolderThatOnlyItsOwnerCanEnter) {
    const test_support::TemporaryFolder parent;
    const TemporaryFile file(parent.path());
    const TemporaryFile other(parent.path());
    EXPECT_NE(file.path(), other.path());
    EXPECT_EQ(fs::status(file.path().parent_path()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(file.path().parent_path().parent_path(), parent.path());
}

TEST(TemporaryFile, IsGoneWithItsObject) {
    const test_support::TemporaryFolder parent;
    {
        const TemporaryFile file(parent.path());
        write(file.path(), "x");
        const TemporaryFile neverMade(parent.path());
    }
    EXPECT_TRUE(fs::is_empty(parent.path()));
}

TEST(TemporaryFile, CannotBeMadeInAFolderThatIsNotThere) {
    EXPECT_THROW(TemporaryFile("/no/such/folder"), std::system_error);
}

TEST(MoveIntoPlace, MakesMissingFolders) {
    const test_support::TemporaryFolder folder;
    write(folder / "file", "x");
    moveIntoPlace(folder / "file", folder / "a/b/place");
    EXPECT_EQ(contentOf(folder / "a/b/place"), "x");
    EXPECT_FALSE(fs::exists(folder / "file"));
}

TEST(MoveIntoPlace, ReplacesWhatIsThere) {
    const test_support::TemporaryFolder folder;
    write(folder / "file", "new");
    write(folder / "place", "old");
    moveIntoPlace(folder / "file", folder / "place");
    EXPECT_EQ(contentOf(folder / "place"), "new");
}

TEST(MoveIntoPlace, ReplacesALinkAndNotWhatItNames) {
    const test_support::TemporaryFolder folder;
    write(folder / "file", "new");
    write(folder / "named", "old");
    fs::create_symlink(folder / "named", folder / "place");
    moveIntoPlace(folder / "file", folder / "place");
    EXPECT_EQ(contentOf(folder / "place"), "new");
    EXPECT_EQ(contentOf(folder / "named"), "old");
}

TEST(MoveIntoPlace, LeavesTheOldFileGoneWhenTheMoveFails) {
    const test_support::TemporaryFolder folder;
    write(folder / "place", "old");
    EXPECT_THROW(moveIntoPlace(folder / "missing", folder / "place"), std::system_error);
    EXPECT_FALSE(fs::exists(folder / "place"));
}

TEST(MoveIntoPlace, StopsAtAFolderThatCannotBeMade) {
    const test_support::TemporaryFolder folder;
    write(folder / "file", "x");
    write(folder / "in-the-way", "x");
    EXPECT_THROW(moveIntoPlace(folder / "file", folder / "in-the-way/place"), std::system_error);
    EXPECT_TRUE(fs::exists(folder / "file"));
}

TEST(MoveIntoPlace, DoesNotReplaceAFolderThatHoldsSomething) {
    const test_support::TemporaryFolder folder;
    write(folder / "file", "x");
    fs::create_directory(folder / "place");
    write(folder / "place/kept", "x");
    EXPECT_THROW(moveIntoPlace(folder / "file", folder / "place"), std::system_error);
    EXPECT_TRUE(fs::exists(folder / "place/kept"));
}

TEST(MoveIntoPlace, CopiesToAnotherFileSystemAndLeavesNothingElseThere) {
    const fs::path shared = "/dev/shm";
    const test_support::TemporaryFolder folder;
    struct stat here {};
    struct stat there {};
    if (::stat(folder.path().c_str(), &here) != 0 || ::stat(shared.c_str(), &there) != 0 ||
        here.st_dev == there.st_dev)
        GTEST_SKIP() << "no second file system here";
    std::string name = (shared / "baseapi-test-XXXXXX").string();
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    const fs::path other = name;
    write(folder / "file", "x");
    write(other / "place", "old");
    moveIntoPlace(folder / "file", other / "place");
    EXPECT_EQ(contentOf(other / "place"), "x");
    EXPECT_EQ(std::distance(fs::directory_iterator(other), {}), 1);
    EXPECT_FALSE(fs::exists(folder / "file"));
    fs::remove_all(other);
}

}  // namespace
}  // namespace baseapi
