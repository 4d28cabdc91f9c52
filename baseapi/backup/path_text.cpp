#include "baseapi/backup/path_text.h"

namespace baseapi::inline v1 {

std::string_view lastPathComponent(std::string_view path) {
    const auto end = path.find_last_not_of('/');
    if (end == path.npos) return {};
    path = path.substr(0, end + 1);
    return path.substr(path.rfind('/') + 1);
}

std::string appendingPathComponent(std::string_view path, std::string_view component) {
    std::string result;
    result.reserve(path.size() + 1 + component.size());
    const auto append = [&](char byte) {
        if (byte != '/' || !result.ends_with('/')) result += byte;
    };
    for (const char byte : path) append(byte);
    if (!result.empty()) append('/');
    for (const char byte : component) append(byte);
    return result;
}

}  // namespace baseapi::inline v1
