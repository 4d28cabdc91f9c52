#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace quillbox {

/// A number of bytes for people, such as "512 B" or "1.2 GB"; a kB is 1,000 bytes.
std::string byteText(double bytes);

/// A length of time for people, such as "0:07" or "1:02:03".
std::string timeText(std::chrono::seconds time);

/// "1 file" or "2 files".
std::string countText(std::int64_t count, const std::string& noun);

}  // namespace quillbox
