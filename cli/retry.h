#pragma once

#include <chrono>

namespace quillbox {

/// How long to wait before the attempt after `failures` failed ones: it doubles from half a second to half a
/// minute. `luck`, from 0 to 1, takes up to half of it away, so that many do not come again at the same
/// moment.
constexpr std::chrono::milliseconds retryDelay(int failures, double luck) {
    std::chrono::milliseconds delay{500};
    constexpr std::chrono::milliseconds longest{30'000};
    for (int count = 1; count < failures && delay < longest; ++count) delay *= 2;
    if (delay > longest) delay = longest;
    return std::chrono::milliseconds(static_cast<long>(static_cast<double>(delay.count()) * (1 - luck / 2)));
}

}  // namespace quillbox
