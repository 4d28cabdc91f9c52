#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test_support {

/// A text entry of Exif metadata. The numbers of those of `photo` and `image` that dates are made of:
namespace exif_tag {
constexpr std::uint16_t dateTime = 0x0132;  // the only one of `image`
constexpr std::uint16_t dateTimeOriginal = 0x9003;
constexpr std::uint16_t dateTimeDigitized = 0x9004;
constexpr std::uint16_t offsetTime = 0x9010;
constexpr std::uint16_t offsetTimeOriginal = 0x9011;
constexpr std::uint16_t offsetTimeDigitized = 0x9012;
constexpr std::uint16_t subSecTime = 0x9290;
constexpr std::uint16_t subSecTimeOriginal = 0x9291;
constexpr std::uint16_t subSecTimeDigitized = 0x9292;
}  // namespace exif_tag

struct ExifText {
    std::uint16_t tag = 0;
    std::string value;
};

/// The entries of a picture's two directories, each in the order of its tags.
struct ExifTexts {
    std::vector<ExifText> image;
    std::vector<ExifText> photo;
};

/// A TIFF file of these entries and no pixels; all other pictures carry one as their metadata.
std::string tiffPicture(const ExifTexts& texts);
std::string jpegPicture(const ExifTexts& texts);
std::string pngPicture(const ExifTexts& texts);
std::string webpPicture(const ExifTexts& texts);
std::string heicPicture(const ExifTexts& texts);

/// A JPEG picture that was taken then, such as "2020:01:02 03:04:05".
std::string jpegTaken(const std::string& date);

}  // namespace test_support
