#include "quillboxd/store/time_text.h"

#include <cstdio>
#include <ctime>

namespace quillboxd {

using std::chrono::system_clock;

std::string timeText(system_clock::time_point time) {
    using namespace std::chrono;
    const auto second = floor<seconds>(time);
    const std::time_t seconds = system_clock::to_time_t(second);
    const auto millis = static_cast<int>(duration_cast<milliseconds>(time - second).count());
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[40];
    const auto length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
    std::snprintf(text + length, sizeof text - length, ".%03dZ", millis);
    return text;
}

std::optional<std::string> normalisedTime(std::string_view text) {
    constexpr std::string_view form = "2026-01-02T03:04:05.678Z";
    constexpr std::string_view withoutMillis = "2026-01-02T03:04:05Z";
    std::string full(text);
    if (text.size() == withoutMillis.size()) full.replace(full.size() - 1, 1, ".000Z");
    std::tm parts{};
    int millis = 0;
    if (full.size() != form.size() || !strptime(full.c_str(), "%Y-%m-%dT%H:%M:%S", &parts) ||
        std::sscanf(full.c_str() + full.find('.') + 1, "%3d", &millis) != 1)
        return std::nullopt;
    // The clock counts nanoseconds, which hold no year far from now; `tm_year` counts from 1900.
    if (parts.tm_year < 0 || parts.tm_year > 300) return std::nullopt;
    // What is no such date or no such form comes back changed.
    const auto time = system_clock::from_time_t(timegm(&parts)) + std::chrono::milliseconds(millis);
    return timeText(time) == full ? std::optional(std::move(full)) : std::nullopt;
}

std::string timestamp() {
    return timeText(system_clock::now());
}

}  // namespace quillboxd
