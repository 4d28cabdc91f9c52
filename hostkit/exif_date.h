#pragma once

#include <chrono>
#include <compare>
#include <optional>
#include <string>

namespace hostkit {

/// A point in time, finer than a second and with room for every year that a file or a picture may name.
struct Instant {
    std::chrono::sys_seconds second;
    std::chrono::nanoseconds fraction{0};

    auto operator<=>(const Instant&) const = default;  // NOLINT(modernize-use-nullptr): it means the operator
};

/// A date as Exif splits it up: "2024:02:29 13:05:59", the digits of the second's fraction ("25" for a
/// quarter) and the offset from UTC ("+08:00"), without which it is local time. Absent for what is no day or
/// time of day, such as the "0000:00:00 00:00:00" of a camera whose clock was never set.
std::optional<Instant> readExifDate(const std::string& date, const std::string& fraction,
                                    const std::string& offset);

}  // namespace hostkit
