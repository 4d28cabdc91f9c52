#include "hostkit/media_type.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <string>

namespace hostkit {

using MediaType = baseapi::PhotoAsset::MediaType;

namespace {

constexpr auto pictures = std::to_array<std::string_view>(
    {".jpg", ".jpeg", ".jpe", ".jfif", ".png", ".gif", ".heic", ".heif", ".hif", ".avif", ".webp", ".jxl",
     ".tif", ".tiff", ".bmp", ".jp2",
     // What cameras write without developing it.
     ".dng", ".arw", ".cr2", ".cr3", ".crw", ".erf", ".mrw", ".nef", ".nrw", ".orf", ".pef", ".raf", ".raw",
     ".rw2", ".rwl", ".sr2", ".srf", ".srw", ".x3f", ".3fr", ".iiq"});

constexpr auto videos = std::to_array<std::string_view>({".mp4", ".m4v", ".mov", ".qt", ".3gp", ".3gpp",
                                                         ".3g2", ".avi", ".mkv", ".webm", ".mpg", ".mpeg",
                                                         ".mts", ".m2ts", ".wmv", ".asf", ".flv", ".ogv"});

}  // namespace

MediaType mediaTypeOf(std::string_view fileName) {
    auto suffix = std::filesystem::path(fileName).extension().native();
    std::ranges::transform(suffix, suffix.begin(), [](unsigned char byte) { return std::tolower(byte); });
    if (std::ranges::find(pictures, suffix) != pictures.end()) return MediaType::image;
    if (std::ranges::find(videos, suffix) != videos.end()) return MediaType::video;
    return MediaType::unknown;
}

}  // namespace hostkit
