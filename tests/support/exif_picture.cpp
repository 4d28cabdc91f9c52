#include "tests/support/exif_picture.h"

namespace test_support {
namespace {

std::string littleEndian(std::uint32_t number, int bytes) {
    std::string text;
    for (int index = 0; index < bytes; ++index) text += static_cast<char>(number >> (8 * index));
    return text;
}

std::string bigEndian(std::uint32_t number, int bytes) {
    const auto reversed = littleEndian(number, bytes);
    return {reversed.rbegin(), reversed.rend()};
}

std::uint32_t lengthOf(const std::string& bytes) {
    return static_cast<std::uint32_t>(bytes.size());
}

constexpr std::uint16_t photoDirectory = 0x8769;
constexpr std::uint32_t entrySize = 12;

/// A directory that begins at `offset`, its texts behind it, and an entry that leads behind both on demand.
std::string directory(std::uint32_t offset, const std::vector<ExifText>& texts, bool leadsOn) {
    const auto entries = static_cast<std::uint32_t>(texts.size()) + (leadsOn ? 1 : 0);
    const auto valuesAt = offset + 2 + entries * entrySize + 4;
    std::string table = littleEndian(entries, 2);
    std::string values;
    for (const auto& text : texts) {
        const auto value = text.value + '\0';
        table += littleEndian(text.tag, 2) + littleEndian(2, 2) + littleEndian(lengthOf(value), 4);
        // Up to four bytes stand in the entry itself.
        if (value.size() <= 4) {
            table += value + std::string(4 - value.size(), '\0');
        } else {
            table += littleEndian(valuesAt + lengthOf(values), 4);
            values += value;
        }
    }
    if (leadsOn)
        table += littleEndian(photoDirectory, 2) + littleEndian(4, 2) + littleEndian(1, 4) +
                 littleEndian(valuesAt + lengthOf(values), 4);
    return table + littleEndian(0, 4) + values;
}

std::uint32_t crcOf(const std::string& bytes) {
    std::uint32_t crc = 0xffffffff;
    for (const unsigned char byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (crc & 1 ? 0xedb88320 : 0);
    }
    return ~crc;
}

std::string pngChunk(const std::string& type, const std::string& content) {
    return bigEndian(lengthOf(content), 4) + type + content + bigEndian(crcOf(type + content), 4);
}

std::string riffChunk(const std::string& type, const std::string& content) {
    return type + littleEndian(lengthOf(content), 4) + content + std::string(content.size() % 2, '\0');
}

std::string box(const std::string& type, const std::string& content) {
    return bigEndian(lengthOf(content) + 8, 4) + type + content;
}

const std::string noVersion(4, '\0');

/// The part of a HEIC file that tells that item 1 is Exif and where it stands.
std::string heicMeta(std::uint32_t offset, std::uint32_t length) {
    const auto item = box(
        "infe", bigEndian(2, 1) + std::string(3, '\0') + bigEndian(1, 2) + bigEndian(0, 2) + "Exif" + '\0');
    const auto place = bigEndian(0x4400, 2) + bigEndian(1, 2) + bigEndian(1, 2) + bigEndian(0, 2) +
                       bigEndian(1, 2) + bigEndian(offset, 4) + bigEndian(length, 4);
    return box("meta", noVersion + box("hdlr", noVersion + noVersion + "pict" + std::string(13, '\0')) +
                           box("iinf", noVersion + bigEndian(1, 2) + item) + box("iloc", noVersion + place));
}

}  // namespace

std::string tiffPicture(const ExifTexts& texts) {
    constexpr std::uint32_t headerSize = 8;
    const auto header = std::string("II*\0", 4) + littleEndian(headerSize, 4);
    const auto image = header + directory(headerSize, texts.image, true);
    return image + directory(lengthOf(image), texts.photo, false);
}

std::string jpegPicture(const ExifTexts& texts) {
    const auto metadata = std::string("Exif\0\0", 6) + tiffPicture(texts);
    return "\xff\xd8\xff\xe1" + bigEndian(lengthOf(metadata) + 2, 2) + metadata +
           std::string("\xff\xda\0\2\xff\xd9", 6);
}

std::string pngPicture(const ExifTexts& texts) {
    const auto header = bigEndian(1, 4) + bigEndian(1, 4) + std::string("\x8\0\0\0\0", 5);
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", header) + pngChunk("eXIf", tiffPicture(texts)) +
           pngChunk("IEND", "");
}

std::string webpPicture(const ExifTexts& texts) {
    const auto header = std::string("\x8\0\0\0\0\0\0\0\0\0", 10);
    const auto chunks = "WEBP" + riffChunk("VP8X", header) + riffChunk("EXIF", tiffPicture(texts));
    return riffChunk("RIFF", chunks);
}

std::string heicPicture(const ExifTexts& texts) {
    const auto metadata = noVersion + tiffPicture(texts);
    const auto kind = box("ftyp", "heic" + noVersion + "mif1heic");
    const auto before = lengthOf(kind) + lengthOf(heicMeta(0, 0));
    return kind + heicMeta(before + 8, lengthOf(metadata)) + box("mdat", metadata);
}

std::string jpegTaken(const std::string& date) {
    return jpegPicture({.photo = {{exif_tag::dateTimeOriginal, date}}});
}

}  // namespace test_support
