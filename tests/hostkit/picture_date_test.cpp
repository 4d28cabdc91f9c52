#include "hostkit/picture_date.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <thread>

#include "tests/support/exif_picture.h"
#include "tests/support/temporary_folder.h"

namespace {

using hostkit::Instant;
using test_support::ExifTexts;
namespace tag = test_support::exif_tag;

class PictureDate : public testing::Test {
  protected:
    void SetUp() override { testing::internal::CaptureStderr(); }
    void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

    std::optional<Instant> dateOf(const std::string& content) const {
        const auto file = folder_ / "picture";
        // A file that is written over may be waited for until it is on the disk.
        std::filesystem::remove(file);
        std::ofstream(file, std::ios::binary) << content;
        return hostkit::pictureDate(file);
    }

    test_support::TemporaryFolder folder_;
};

const ExifTexts allDates{
    .image = {{tag::dateTime, "2023:01:01 00:00:00"}},
    .photo = {{tag::dateTimeOriginal, "2021:01:01 00:00:00"},
              {tag::dateTimeDigitized, "2022:01:01 00:00:00"},
              {tag::offsetTime, "+03:00"},
              {tag::offsetTimeOriginal, "+01:00"},
              {tag::offsetTimeDigitized, "+02:00"},
              {tag::subSecTime, "3"},
              {tag::subSecTimeOriginal, "1"},
              {tag::subSecTimeDigitized, "2"}},
};

TEST_F(PictureDate, IsTheOneOfTheTakingThenOfTheDigitisingThenOfTheChange) {
    auto texts = allDates;
    EXPECT_EQ(dateOf(jpegPicture(texts)), hostkit::readExifDate("2021:01:01 00:00:00", "1", "+01:00"));
    texts.photo[0].value = "0000:00:00 00:00:00";
    EXPECT_EQ(dateOf(jpegPicture(texts)), hostkit::readExifDate("2022:01:01 00:00:00", "2", "+02:00"));
    texts.photo[1].value = "    :  :     :  :  ";
    EXPECT_EQ(dateOf(jpegPicture(texts)), hostkit::readExifDate("2023:01:01 00:00:00", "3", "+03:00"));
    texts.image[0].value = "?";
    EXPECT_EQ(dateOf(jpegPicture(texts)), std::nullopt);
}

TEST_F(PictureDate, IsReadOfEveryUsualKindOfPictureWhateverItsName) {
    const auto expected = hostkit::readExifDate("2021:01:01 00:00:00", "1", "+01:00");
    EXPECT_EQ(dateOf(jpegPicture(allDates)), expected);
    EXPECT_EQ(dateOf(tiffPicture(allDates)), expected);
    EXPECT_EQ(dateOf(pngPicture(allDates)), expected);
    EXPECT_EQ(dateOf(webpPicture(allDates)), expected);
    EXPECT_EQ(dateOf(heicPicture(allDates)), expected);
}

TEST_F(PictureDate, IsAbsentWithoutMetadataAndForWhatIsNoPicture) {
    EXPECT_EQ(dateOf(test_support::jpegPicture({})), std::nullopt);
    EXPECT_EQ(dateOf("no picture"), std::nullopt);
    EXPECT_EQ(dateOf(""), std::nullopt);
    EXPECT_EQ(hostkit::pictureDate(folder_ / "missing"), std::nullopt);
    EXPECT_EQ(hostkit::pictureDate(folder_.path()), std::nullopt);
}

TEST_F(PictureDate, IsAbsentForAVideo) {
    const auto movie = std::string("\0\0\0\x14", 4) + "ftypqt  " + std::string(4, '\0') + "qt  " +
                       std::string("\0\0\0\x8", 4) + "moov";
    EXPECT_EQ(dateOf(movie), std::nullopt);
    const auto avi = std::string("RIFF\x4\0\0\0", 8) + "AVI ";
    EXPECT_EQ(dateOf(avi), std::nullopt);
}

TEST_F(PictureDate, IsReadOfAPathThatLooksLikeAnAddress) {
    const auto before = std::filesystem::current_path();
    std::filesystem::create_directories(folder_ / "http:" / "example.org");
    std::filesystem::current_path(folder_.path());
    std::ofstream("http:/example.org/a.jpg", std::ios::binary) << jpegPicture(allDates);
    std::ofstream("-", std::ios::binary) << jpegPicture(allDates);
    EXPECT_TRUE(hostkit::pictureDate("http://example.org/a.jpg"));
    EXPECT_TRUE(hostkit::pictureDate("-"));
    std::filesystem::current_path(before);
}

/// Any change and any end: a date or none, in silence.
TEST_F(PictureDate, OfABrokenPictureIsADateOrNone) {
    std::mt19937 random(1);
    for (const auto& whole : {jpegPicture(allDates), tiffPicture(allDates), pngPicture(allDates),
                              webpPicture(allDates), heicPicture(allDates)}) {
        for (std::size_t length = 0; length < whole.size(); length += 3) dateOf(whole.substr(0, length));
        for (int round = 0; round < 500; ++round) {
            auto broken = whole;
            for (int change = 0; change < 3; ++change)
                broken[random() % broken.size()] = static_cast<char>(random());
            dateOf(broken);
        }
    }
}

/// Of a JPEG picture: metadata with a namespace of their own.
std::string xmpSegment() {
    std::string packet = "http://ns.adobe.com/xap/1.0/";
    packet += '\0';
    packet +=
        "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
        "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
        "<rdf:Description rdf:about='' xmlns:own='http://example.org/own/' "
        "own:word='x'/></rdf:RDF></x:xmpmeta>";
    std::string segment = "\xff\xe1";
    segment += '\0';
    segment += static_cast<char>(packet.size() + 2);
    return segment + packet;
}

TEST_F(PictureDate, IsReadByAllThreadsAtOnce) {
    auto picture = test_support::jpegTaken("2020:01:02 03:04:05");
    picture.insert(2, xmpSegment());
    const auto expected = dateOf(picture);
    ASSERT_TRUE(expected);
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round)
                EXPECT_EQ(hostkit::pictureDate(folder_ / "picture"), expected);
        });
}

}  // namespace
