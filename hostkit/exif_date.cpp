#include "hostkit/exif_date.h"

#include <time.h>

#include <string_view>

namespace hostkit {
namespace {

bool isDay(const std::tm& date) {
    using namespace std::chrono;
    return year_month_day{year{date.tm_year + 1900}, month{static_cast<unsigned>(date.tm_mon) + 1},
                          day{static_cast<unsigned>(date.tm_mday)}}
        .ok();
}

std::time_t secondsOf(std::tm date, const std::string& offset) {
    std::tm zone{};
    if (::strptime(offset.c_str(), "%z", &zone)) return ::timegm(&date) - zone.tm_gmtoff;
    date.tm_isdst = -1;
    return std::mktime(&date);
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
    if (!::strptime(date.c_str(), "%Y:%m:%d %H:%M:%S", &parts) || !isDay(parts)) return std::nullopt;
    const std::chrono::seconds second(secondsOf(parts, offset));
    return Instant{std::chrono::sys_seconds(second), fractionOf(fraction)};
}

}  // namespace hostkit
