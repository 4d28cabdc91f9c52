#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "tests/json/sample_records.h"

namespace baseapi::sample {

using Kind = DecodingError::Kind;

/// Reads a text that has to be right.
template <class T>
T readWell(std::string text, DecodingMode mode = DecodingMode::strict) {
    auto record = emptyRecord<T>();
    const auto error = decode(text, record, mode);
    EXPECT_FALSE(error) << error->description() << "\n" << text.substr(0, 200);
    return record;
}

/// The error of a text that has to be wrong.
template <class T>
DecodingError readBadly(std::string text, DecodingMode mode = DecodingMode::strict) {
    auto record = emptyRecord<T>();
    auto error = decode(text, record, mode);
    EXPECT_TRUE(error) << text.substr(0, 200);
    return error.value_or(DecodingError{Kind::dataCorrupted, "no error", "", ""});
}

/// `levels` times `open`, then as often `close`.
inline std::string nested(const std::string& open, const std::string& close, int levels) {
    std::string text;
    for (int level = 0; level < levels; ++level) text += open;
    for (int level = 0; level < levels; ++level) text += close;
    return text;
}

}  // namespace baseapi::sample
