#include "baseapi/backup/asset_slice_fetcher.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/support/temporary_folder.h"
#include "tests/support/test_platform.h"
#include "tests/support/without_root_rights.h"

namespace baseapi {
namespace {

namespace fs = std::filesystem;
using MediaType = PhotoAsset::MediaType;

class AssetSliceFetcherTest : public testing::Test {
  protected:
    void SetUp() override {
        test_support::recordingLog().clear();
        test_support::photoLibrary().reset();
        std::ofstream(folder_ / "asset.heic") << "0123456789";
        behind(folder_ / "asset.heic");
    }

    static void behind(const fs::path& path) {
        answer({PhotoLibrary::ContentEditingInput{path.string()}, std::nullopt});
    }
    static void answer(const PhotoLibrary::ContentEditingAnswer& given) {
        test_support::photoLibrary().plan.editingInput = [=](const auto&, const auto& answered) {
            answered(given);
        };
    }
    /// The bytes, or "domain code message".
    static std::string slice(std::uint64_t offset, std::uint64_t size, MediaType type = MediaType::image) {
        std::string text = "no answer";
        AssetSliceFetcher::getAssetSlice(
            {"a", type}, offset, size, [&](const auto& bytes, const auto& error) {
                EXPECT_NE(bytes.has_value(), error.has_value());
                text =
                    bytes ? *bytes : error->domain + " " + std::to_string(error->code) + " " + error->message;
            });
        return text;
    }

    test_support::TemporaryFolder folder_;
};

TEST_F(AssetSliceFetcherTest, ReadsTheRange) {
    EXPECT_EQ(slice(2, 3), "234");
    EXPECT_EQ(test_support::photoLibrary().requests().back(), "editing network 1");
}

TEST_F(AssetSliceFetcherTest, CutsARangeThatRunsPastTheEnd) {
    EXPECT_EQ(slice(8, 100), "89");
}

TEST_F(AssetSliceFetcherTest, AnOffsetAtTheEndIsAnErrorAndOneBeforeIsNot) {
    EXPECT_EQ(slice(10, 1), "AssetSliceError 4 偏移量超出文件大小");
    EXPECT_EQ(slice(9, 5), "9");
}

TEST_F(AssetSliceFetcherTest, ReadsBehindFourGibibytes) {
    constexpr std::uint64_t far = 5'368'709'120;
    std::ofstream(folder_ / "asset.heic").seekp(far) << "0123456789";
    EXPECT_EQ(slice(far + 2, 3), "234");
    EXPECT_EQ(slice(far + 8, 100), "89");
}

TEST_F(AssetSliceFetcherTest, ASizeOfZeroGivesNoBytesAndNoError) {
    EXPECT_EQ(slice(3, 0), "");
}

TEST_F(AssetSliceFetcherTest, TakesTheMovieBesideTheFileOfAVideo) {
    std::ofstream(folder_ / "asset.mov") << "movie";
    EXPECT_EQ(slice(0, 5, MediaType::video), "movie");
}

TEST_F(AssetSliceFetcherTest, AVideoWithoutAMovieHasNoAddress) {
    EXPECT_EQ(slice(0, 5, MediaType::video), "AssetSliceError 1 无法获取资源URL");
}

TEST_F(AssetSliceFetcherTest, AnErrorOfThePlatformReachesOnlyTheLog) {
    answer({std::nullopt, "in the cloud"});
    EXPECT_EQ(slice(0, 5), "AssetSliceError 1 无法获取资源URL");
    EXPECT_TRUE(test_support::recordingLog().contains("获取URL失败: in the cloud"));
}

TEST_F(AssetSliceFetcherTest, AnAssetOfAnotherKindHasNoAddress) {
    EXPECT_EQ(slice(0, 5, MediaType::unknown), "AssetSliceError 1 无法获取资源URL");
}

TEST_F(AssetSliceFetcherTest, WithoutAnInputThereIsNoAddress) {
    answer({});
    EXPECT_EQ(slice(0, 5), "AssetSliceError 1 无法获取资源URL");
}

TEST_F(AssetSliceFetcherTest, WhatIsNoFileHasNoSize) {
    behind(folder_.path());
    EXPECT_EQ(slice(0, 5), "AssetSliceError 3 无法获取文件大小");
}

TEST_F(AssetSliceFetcherTest, HandsTheErrorsOfTheFileSystemOver) {
    fs::permissions(folder_ / "asset.heic", fs::perms::none);
    fs::permissions(folder_.path(), fs::perms::all);
    test_support::withoutRootRights([&] { EXPECT_EQ(slice(0, 5), "generic 13 Permission denied"); });
}

}  // namespace
}  // namespace baseapi
