#include "baseapi/transfer/file_info_util.h"

#include <initializer_list>
#include <unordered_map>

#include "baseapi/platform/mime_types.h"
#include "baseapi/transfer/file_type.h"

namespace baseapi::inline v1 {
namespace {

struct SuffixList {
    FileType type;
    std::initializer_list<std::string_view> suffixes;
};

std::unordered_map<std::string_view, FileType> makeTable() {
    const SuffixList lists[] = {
        {FileType::ppt, {"ppt", "pptx"}},
        {FileType::word, {"doc", "docx"}},
        {FileType::video,
         {"mov", "mp4", "mpg4", "wmv", "m4u", "3gp", "m4v", "ts", "asf", "mkv", "avi", "rmvb", "asx", "h.264",
          "hevc", "prores"}},
        {FileType::picture,
         {"jpeg", "jpg", "png", "jpe", "webp", "gif", "heic", "bmp", "tif", "apng", "tga", "arw", "ico",
          "avif"}},
        {FileType::audio,
         {"mp3", "m3u", "m4a", "m4b", "m4p", "mp2", "mpga", "ogg", "wav", "wma", "flac", "aac", "ape"}},
        {FileType::excel, {"xls", "xlsx"}},
        {FileType::pdf, {"pdf"}},
        {FileType::application, {"apk", "ipa", "mpkg"}},
        {FileType::archive, {"zip", "rar"}},
    };
    std::unordered_map<std::string_view, FileType> table;
    for (const auto& list : lists)
        for (const auto suffix : list.suffixes) table.emplace(suffix, list.type);
    return table;
}

}  // namespace

std::string FileInfoUtil::fileTypeCode(const URL& of) {
    static const auto& table = *new auto(makeTable());  // never destroyed
    const auto found = table.find(of.pathExtension());
    return std::string(baseapi::fileTypeCode(found == table.end() ? FileType::other : found->second));
}

std::string FileInfoUtil::mimeType(std::string_view forSuffix) {
    return mimeTypeOfSuffix(forSuffix).value_or("application/octet-stream");
}

}  // namespace baseapi::inline v1
