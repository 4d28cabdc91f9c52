#include "hostkit/picture_date.h"

#include <exiv2/bmffimage.hpp>
#include <exiv2/error.hpp>
#include <exiv2/image.hpp>
#include <exiv2/xmp_exiv2.hpp>

#include <cstdlib>
#include <mutex>
#include <string>

namespace hostkit {
namespace {

struct DateTags {
    const char* date;
    const char* fraction;
    const char* offset;
};
constexpr DateTags dateTags[] = {
    {"Exif.Photo.DateTimeOriginal", "Exif.Photo.SubSecTimeOriginal", "Exif.Photo.OffsetTimeOriginal"},
    {"Exif.Photo.DateTimeDigitized", "Exif.Photo.SubSecTimeDigitized", "Exif.Photo.OffsetTimeDigitized"},
    {"Exif.Image.DateTime", "Exif.Photo.SubSecTime", "Exif.Photo.OffsetTime"},
};

/// Whoever is in Exiv2 holds it: one thread has to ready its XMP parser, and as the process ends its own
/// objects go, so that no thread may be in it from then on.
std::mutex exiv2;

void setUpExiv2() {
    [[maybe_unused]] static const bool ready = [] {
        Exiv2::LogMsg::setHandler(nullptr);
        Exiv2::enableBMFF();
        Exiv2::XmpParser::initialize();
        return std::atexit([] { exiv2.lock(); }) == 0;
    }();
}

std::string textOf(const Exiv2::ExifData& exif, const char* tag) {
    const auto found = exif.findKey(Exiv2::ExifKey(tag));
    return found == exif.end() ? std::string() : found->toString();
}

std::optional<Instant> dateOf(const Exiv2::ExifData& exif) {
    for (const auto& tags : dateTags) {
        const auto date =
            readExifDate(textOf(exif, tags.date), textOf(exif, tags.fraction), textOf(exif, tags.offset));
        if (date) return date;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Instant> pictureDate(const std::filesystem::path& picture) noexcept try {
    const std::lock_guard lock(exiv2);
    setUpExiv2();
    // From the root, since Exiv2 takes "http://..." and "-" for something else than a file.
    const auto image = Exiv2::ImageFactory::open(std::filesystem::absolute(picture).native());
    // A video under the name of a picture: some broken ones would be read for ever.
    if (!image->mimeType().starts_with("image/")) return std::nullopt;
    image->readMetadata();
    return dateOf(image->exifData());
} catch (...) {
    return std::nullopt;
}

}  // namespace hostkit
