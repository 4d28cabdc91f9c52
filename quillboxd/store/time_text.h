#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quillboxd {

/// A time as the service writes times: "2026-01-02T03:04:05.678Z". Such texts sort like the times.
std::string timeText(std::chrono::system_clock::time_point time);

/// The time of a text of this form, also without the milliseconds, as `timeText` writes it; nothing for any
/// other.
std::optional<std::string> normalisedTime(std::string_view text);

/// The present time.
std::string timestamp();

}  // namespace quillboxd
