#include "cli/quantity.h"

#include <cstdio>

namespace quillbox {

std::string byteText(double bytes) {
    constexpr const char* units[] = {"B", "kB", "MB", "GB", "TB", "PB", "EB"};
    std::size_t unit = 0;
    // 999.95 would be written "1000.0".
    for (; bytes >= 999.95 && unit + 1 < std::size(units); ++unit) bytes /= 1000;
    char text[32];
    std::snprintf(text, sizeof text, unit == 0 ? "%.0f %s" : "%.1f %s", bytes, units[unit]);
    return text;
}

std::string timeText(std::chrono::seconds time) {
    const auto all = static_cast<long long>(time.count());
    char text[48];
    if (all >= 3600)
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", all / 3600, all / 60 % 60, all % 60);
    else
        std::snprintf(text, sizeof text, "%lld:%02lld", all / 60, all % 60);
    return text;
}

std::string countText(std::int64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace quillbox
