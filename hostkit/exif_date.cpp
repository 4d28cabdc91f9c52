#include "hostkit/exif_date.h"

#include <time.h>

#include <string_view>

namespace hostkit {
namespace {

std::chrono::year_month_day dayOf(const std::tm& date) {
    using namespace std::chrono;
    return {year{date.tm_year + 1900}, month{static_cast<unsigned>(date.tm_mon) + 1},
            day{static_cast<unsigned>(date.tm_mday)}};
}

std::chrono::sys_seconds secondOf(std::tm date, const std::string& offset) {
    using namespace std::chrono;
    const sys_seconds inUtc =
        sys_days(dayOf(date)) + hours(date.tm_hour) + minutes(date.tm_min) + seconds(date.tm_sec);
    std::tm zone{};
    if (::strptime(offset.c_str(), "%z", &zone)) return inUtc - seconds(zone.tm_gmtoff);
    date.tm_isdst = -1;
    date.tm_wday = -1;
    const auto local = std::mktime(&date);
    // A system whose time has 32 bits knows its zone between 1901 and 2038 alone, and leaves other dates as
    // they are.
    return date.tm_wday < 0 ? inUtc : sys_seconds(seconds(local));
}

std::chrono::nanoseconds fractionOf(std::string_view digits) {
    std::chrono::nanoseconds fraction{0};
    std::chrono::nanoseconds unit{100'000'000};
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') break;
        fraction += (digit - '0') * unit;
        unit /= 10;
    }
    return fraction;
}

}  // namespace

std::optional<Instant> readExifDate(const std::string& date, const std::string& fraction,
                                    const std::string& offset) {
    std::tm parts{};
    if (!::strptime(date.c_str(), "%Y:%m:%d %H:%M:%S", &parts) || !dayOf(parts).ok()) return std::nullopt;
    return Instant{secondOf(parts, offset), fractionOf(fraction)};
}

}  // namespace hostkit
