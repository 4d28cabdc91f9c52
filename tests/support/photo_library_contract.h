#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "baseapi/platform/photo_library.h"
#include "tests/support/file_content.h"

namespace test_support {

/// What is added to a library that is tested.
struct NewAsset {
    /// "NAME.jpg" or "NAME.mp4".
    std::string name;
    /// Its creation date.
    std::chrono::sys_seconds date{};
    std::string content;
};

/// What every photo library must do. `Libraries` makes an empty library with `library()`, another object of
/// the same library, as a later run would have it, with `again()`, adds an asset to it with `add(asset)`, and
/// makes one without permission that has assets with `refused()`.
template <class Libraries>
class PhotoLibraryContract : public testing::Test {
  protected:
    using Asset = baseapi::PhotoAsset;
    using Library = baseapi::PhotoLibrary;
    using MediaType = Asset::MediaType;

    static constexpr std::chrono::sys_seconds day(int number) {
        return std::chrono::sys_days() + std::chrono::days(number);
    }

    std::vector<Asset> images() { return libraries_.library().fetchAssets(MediaType::image); }
    std::vector<Asset> videos() { return libraries_.library().fetchAssets(MediaType::video); }
    std::vector<std::string> namesOf(const std::vector<Asset>& assets) {
        std::vector<std::string> names;
        for (const auto& asset : assets)
            names.push_back(libraries_.library().originalFilename(asset).value_or("none"));
        return names;
    }

    /// The answer, which comes once and while the request is waited for.
    template <class Answer, class Request>
    static Answer answerOf(Request request) {
        std::promise<Answer> answered;
        request([&](Answer answer) { answered.set_value(std::move(answer)); });
        return answered.get_future().get();
    }
    using Optional = std::optional<std::string>;
    Optional dataOf(const Asset& asset) {
        return answerOf<Optional>(
            [&](auto answer) { libraries_.library().requestImageData(asset, {}, answer); });
    }
    Optional videoOf(const Asset& asset) {
        return answerOf<Optional>(
            [&](auto answer) { libraries_.library().requestVideoFile(asset, {}, answer); });
    }
    Library::ContentEditingAnswer editingInputOf(const Asset& asset) {
        return answerOf<Library::ContentEditingAnswer>(
            [&](auto answer) { libraries_.library().requestContentEditingInput(asset, {}, answer); });
    }
    static std::string contentOf(const Optional& path) {
        return path ? test_support::contentOf(*path) : "no file";
    }

    Libraries libraries_;
};

TYPED_TEST_SUITE_P(PhotoLibraryContract);

TYPED_TEST_P(PhotoLibraryContract, AnEmptyLibraryGrantsAndHasNothing) {
    EXPECT_THAT(this->libraries_.library().authorizationStatus(), testing::AnyOf(3, 4));
    EXPECT_TRUE(this->images().empty());
    EXPECT_TRUE(this->videos().empty());
}

TYPED_TEST_P(PhotoLibraryContract, PicturesAndVideosComeApart) {
    this->libraries_.add({"a.jpg", this->day(1), ""});
    this->libraries_.add({"b.mp4", this->day(2), ""});
    ASSERT_EQ(this->images().size(), 1u);
    ASSERT_EQ(this->videos().size(), 1u);
    EXPECT_EQ(this->images()[0].mediaType, baseapi::PhotoAsset::MediaType::image);
    EXPECT_EQ(this->videos()[0].mediaType, baseapi::PhotoAsset::MediaType::video);
    EXPECT_TRUE(this->libraries_.library().fetchAssets(baseapi::PhotoAsset::MediaType::unknown).empty());
}

TYPED_TEST_P(PhotoLibraryContract, TheOldestComesFirst) {
    for (const int number : {3, 1, 4, 0, 2}) {
        this->libraries_.add({std::to_string(9 - number) + ".jpg", this->day(number), ""});
        this->libraries_.add({std::to_string(9 - number) + ".mp4", this->day(number), ""});
    }
    EXPECT_THAT(this->namesOf(this->images()),
                testing::ElementsAre("9.jpg", "8.jpg", "7.jpg", "6.jpg", "5.jpg"));
    EXPECT_THAT(this->namesOf(this->videos()),
                testing::ElementsAre("9.mp4", "8.mp4", "7.mp4", "6.mp4", "5.mp4"));
}

TYPED_TEST_P(PhotoLibraryContract, AnIdentifierNamesItsAssetAlsoInALaterRunWithMoreAssets) {
    this->libraries_.add({"b.jpg", this->day(2), "b"});
    this->libraries_.add({"d.jpg", this->day(4), "d"});
    const auto before = this->images();
    ASSERT_EQ(before.size(), 2u);
    EXPECT_NE(before[0].localIdentifier, before[1].localIdentifier);

    this->libraries_.add({"a.jpg", this->day(1), "a"});
    this->libraries_.add({"c.jpg", this->day(3), "c"});
    const auto after = this->libraries_.again().fetchAssets(baseapi::PhotoAsset::MediaType::image);
    ASSERT_EQ(after.size(), 4u);
    EXPECT_EQ(after[1].localIdentifier, before[0].localIdentifier);
    EXPECT_EQ(after[3].localIdentifier, before[1].localIdentifier);
    EXPECT_EQ(this->dataOf(before[1]), "d");
}

TYPED_TEST_P(PhotoLibraryContract, AnAssetHasItsNameAndSize) {
    this->libraries_.add({"a.jpg", this->day(1), "four"});
    this->libraries_.add({"b.mp4", this->day(1), ""});
    EXPECT_EQ(this->namesOf(this->images()), std::vector<std::string>{"a.jpg"});
    EXPECT_EQ(this->libraries_.library().fileSize(this->images().at(0)), 4);
    EXPECT_EQ(this->libraries_.library().fileSize(this->videos().at(0)), 0);
}

TYPED_TEST_P(PhotoLibraryContract, APictureAnswersItsBytesAndNoVideo) {
    const auto bytes = std::string("\0\xff\r\n", 4) + std::string(100'000, 'x');
    this->libraries_.add({"a.jpg", this->day(1), bytes});
    this->libraries_.add({"empty.jpg", this->day(2), ""});
    EXPECT_EQ(this->dataOf(this->images().at(0)), bytes);
    EXPECT_EQ(this->dataOf(this->images().at(1)), "");
    EXPECT_EQ(this->videoOf(this->images().at(0)), std::nullopt);
}

TYPED_TEST_P(PhotoLibraryContract, AVideoAnswersItsFileAndNoPicture) {
    this->libraries_.add({"a.mp4", this->day(1), "frames"});
    EXPECT_EQ(this->contentOf(this->videoOf(this->videos().at(0))), "frames");
    EXPECT_EQ(this->dataOf(this->videos().at(0)), std::nullopt);
}

TYPED_TEST_P(PhotoLibraryContract, AnEditingInputLeadsToTheFileOfEitherKind) {
    this->libraries_.add({"a.jpg", this->day(1), "dots"});
    this->libraries_.add({"b.mp4", this->day(1), "frames"});
    for (const auto& [asset, content] :
         {std::pair(this->images().at(0), "dots"), std::pair(this->videos().at(0), "frames")}) {
        const auto answer = this->editingInputOf(asset);
        EXPECT_EQ(answer.error, std::nullopt);
        ASSERT_TRUE(answer.input);
        EXPECT_EQ(this->contentOf(answer.input->fullSizeImagePath), content);
    }
}

TYPED_TEST_P(PhotoLibraryContract, AnAssetOfElsewhereHasNothing) {
    this->libraries_.add({"a.jpg", this->day(1), ""});
    const baseapi::PhotoAsset elsewhere{"/elsewhere/a.jpg", baseapi::PhotoAsset::MediaType::image};
    EXPECT_EQ(this->libraries_.library().originalFilename(elsewhere), std::nullopt);
    EXPECT_EQ(this->libraries_.library().fileSize(elsewhere), std::nullopt);
    EXPECT_EQ(this->dataOf(elsewhere), std::nullopt);
    EXPECT_EQ(this->videoOf(elsewhere), std::nullopt);
    EXPECT_FALSE(this->editingInputOf(elsewhere).input);
}

TYPED_TEST_P(PhotoLibraryContract, SeveralThreadsAskAtOnce) {
    for (int number = 0; number < 4; ++number)
        this->libraries_.add({std::to_string(number) + ".jpg", this->day(number), std::to_string(number)});
    const auto ask = [this] {
        for (int round = 0; round < 10; ++round) {
            const auto assets = this->images();
            ASSERT_EQ(assets.size(), 4u);
            for (std::size_t number = 0; number < 4; ++number)
                EXPECT_EQ(this->dataOf(assets[number]), std::to_string(number));
        }
    };
    const std::jthread first(ask);
    const std::jthread second(ask);
    ask();
}

TYPED_TEST_P(PhotoLibraryContract, WithoutPermissionNothingIsFound) {
    auto& library = this->libraries_.refused();
    EXPECT_THAT(library.authorizationStatus(), testing::Not(testing::AnyOf(3, 4)));
    EXPECT_TRUE(library.fetchAssets(baseapi::PhotoAsset::MediaType::image).empty());
    EXPECT_TRUE(library.fetchAssets(baseapi::PhotoAsset::MediaType::video).empty());
}

REGISTER_TYPED_TEST_SUITE_P(PhotoLibraryContract, AnEmptyLibraryGrantsAndHasNothing,
                            PicturesAndVideosComeApart, TheOldestComesFirst,
                            AnIdentifierNamesItsAssetAlsoInALaterRunWithMoreAssets, AnAssetHasItsNameAndSize,
                            APictureAnswersItsBytesAndNoVideo, AVideoAnswersItsFileAndNoPicture,
                            AnEditingInputLeadsToTheFileOfEitherKind, AnAssetOfElsewhereHasNothing,
                            SeveralThreadsAskAtOnce, WithoutPermissionNothingIsFound);

}  // namespace test_support
