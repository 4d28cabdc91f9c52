#include "baseapi/contacts/side_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <system_error>

#include "tests/support/file_content.h"
#include "tests/support/temporary_folder.h"

namespace {

using baseapi::SideFile;
namespace fs = std::filesystem;

class SideFileTest : public testing::Test {
  protected:
    std::string content() const { return test_support::contentOf(place_); }
    std::size_t files() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_.path()), {}));
    }

    test_support::TemporaryFolder folder_;
    const fs::path place_ = folder_ / "card.vcf";
};

TEST_F(SideFileTest, TakesThePlaceOfAnOlderFileAsAWhole) {
    std::ofstream(place_) << "older and longer";
    SideFile file(place_);
    file.write("new");
    EXPECT_EQ(content(), "older and longer");
    file.takePlace();
    EXPECT_EQ(content(), "new");
    EXPECT_EQ(files(), 1u);
}

TEST_F(SideFileTest, IsGoneWhereItNeverTakesItsPlace) {
    {
        SideFile file(place_);
        file.write("new");
        EXPECT_EQ(files(), 1u);
    }
    EXPECT_EQ(files(), 0u);
}

TEST_F(SideFileTest, CanBeMovedAndIsThenAnothers) {
    SideFile first(place_);
    SideFile file(std::move(first));
    file.write("new");
    file.takePlace();
    EXPECT_EQ(content(), "new");
}

TEST_F(SideFileTest, AFolderThatIsNotThereIsAnError) {
    EXPECT_THROW(SideFile(folder_ / "missing" / "card.vcf"), std::system_error);
}

TEST_F(SideFileTest, APlaceThatIsAFolderStaysAndTheSideFileGoes) {
    fs::create_directory(place_);
    {
        SideFile file(place_);
        file.write("new");
        EXPECT_THROW(file.takePlace(), std::system_error);
    }
    EXPECT_TRUE(fs::is_directory(place_));
    EXPECT_EQ(files(), 1u);
}

TEST_F(SideFileTest, IsReadableByItsOwnerAlone) {
    SideFile file(place_);
    file.write("new");
    file.takePlace();
    EXPECT_EQ(fs::status(place_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace
