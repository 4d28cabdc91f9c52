#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace baseapi::inline v1::json {

/// The most characters that a 64-bit integer takes.
inline constexpr std::size_t longestDecimal = 20;

/// Every number below 100 in two digits.
inline constexpr std::array<char, 200> digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t number = 0; number < 100; ++number) {
        pairs[2 * number] = static_cast<char>('0' + number / 10);
        pairs[2 * number + 1] = static_cast<char>('0' + number % 10);
    }
    return pairs;
}();

inline char* putTwoDigits(char* at, std::uint32_t number) {
    std::memcpy(at, digitPairs.data() + std::size_t{2} * number, 2);
    return at + 2;
}

inline char* putFourDigits(char* at, std::uint32_t number) {
    return putTwoDigits(putTwoDigits(at, number / 100), number % 100);
}

/// Writes a number below 10,000 without leading zeros.
inline char* putShortDecimal(char* at, std::uint32_t number) {
    if (number >= 1000) return putFourDigits(at, number);
    if (number >= 100) {
        *at++ = static_cast<char>('0' + number / 100);
        return putTwoDigits(at, number % 100);
    }
    if (number >= 10) return putTwoDigits(at, number);
    *at = static_cast<char>('0' + number);
    return at + 1;
}

/// Writes the decimal digits of a number, in half the time of `std::to_chars`; gives the place behind them.
inline char* putDecimal(char* at, std::uint32_t number) {
    constexpr std::uint32_t four = 10'000;
    constexpr std::uint32_t eight = 100'000'000;
    if (number < four) return putShortDecimal(at, number);
    if (number < eight) return putFourDigits(putShortDecimal(at, number / four), number % four);
    at = putShortDecimal(at, number / eight);
    return putFourDigits(putFourDigits(at, number % eight / four), number % four);
}

inline char* putDecimal(char* at, std::uint64_t number) {
    constexpr std::uint32_t eight = 100'000'000;
    if (number <= UINT32_MAX) return putDecimal(at, static_cast<std::uint32_t>(number));
    at = putDecimal(at, number / eight);
    const auto rest = static_cast<std::uint32_t>(number % eight);
    return putFourDigits(putFourDigits(at, rest / 10'000), rest % 10'000);
}

inline char* putDecimal(char* at, std::int64_t number) {
    if (number >= 0) return putDecimal(at, static_cast<std::uint64_t>(number));
    *at = '-';
    return putDecimal(at + 1, 0 - static_cast<std::uint64_t>(number));
}

}  // namespace baseapi::inline v1::json
