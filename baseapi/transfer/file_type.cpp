#include "baseapi/transfer/file_type.h"

#include <algorithm>
#include <array>

namespace baseapi::inline v1 {
namespace {

struct Row {
    std::string_view rawValue;
    std::string_view code;
};

/// In the order of the cases.
constexpr std::array<Row, 11> table{{
    {"folder", "10"},
    {"picture", "15"},
    {"video", "20"},
    {"word", "26"},
    {"excel", "27"},
    {"ppt", "28"},
    {"audio", "30"},
    {"archive", "35"},
    {"application", "40"},
    {"pdf", "45"},
    {"other", "45"},
}};

const Row& rowOf(FileType type) {
    return table.at(static_cast<std::size_t>(type));
}

}  // namespace

std::string_view rawValue(FileType type) {
    return rowOf(type).rawValue;
}

std::optional<FileType> fileTypeOf(std::string_view rawValue) {
    const auto* row =
        std::find_if(table.begin(), table.end(), [&](const Row& it) { return it.rawValue == rawValue; });
    if (row == table.end()) return std::nullopt;
    return static_cast<FileType>(row - table.begin());
}

std::string_view fileTypeCode(FileType type) {
    return rowOf(type).code;
}

}  // namespace baseapi::inline v1
