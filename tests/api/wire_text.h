#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "baseapi/json/codec.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/lenient_int64.h"

namespace baseapi {

/// Fields of these types take a value of any type: as absent, or as 0.
template <class Field>
inline constexpr bool takesAnything =
    std::same_as<Field, std::optional<FlatMap>> || std::same_as<Field, LenientInt64>;

/// The record's wire text is this one, in both directions, and a value of another type under any of its keys
/// fails it there.
template <Record T>
void expectWireText(const T& record, std::string text) {
    EXPECT_EQ(encode(record), text);
    auto decoded = emptyRecord<T>();
    const auto error = decode(text, decoded);
    EXPECT_FALSE(error) << error->description();
    EXPECT_TRUE(decoded == record);

    T::fields([&](std::string_view key, auto member) {
        if constexpr (!takesAnything<std::decay_t<decltype(record.*member)>>) {
            const std::string name(key);
            std::string wrong = "{\"" + name + "\":[[]]}";
            auto ignored = emptyRecord<T>();
            const auto mismatch = decode(wrong, ignored);
            ASSERT_TRUE(mismatch) << name;
            EXPECT_EQ(mismatch->kind, DecodingError::Kind::typeMismatch) << mismatch->description();
            EXPECT_TRUE(mismatch->path == name || mismatch->path == name + "[0]") << mismatch->path;
        }
    });
}

/// The text, in which no field is absent, is the wire text of the record that is read from it.
template <Record T>
void expectFullText(const std::string& text) {
    SCOPED_TRACE(T::recordName);
    auto copy = text;
    auto record = emptyRecord<T>();
    const auto error = decode(copy, record);
    EXPECT_FALSE(error) << error->description();
    T::fields([&](std::string_view key, auto member) {
        if constexpr (requires { (record.*member).has_value(); }) {
            EXPECT_TRUE((record.*member).has_value()) << key;
        }
    });
    expectWireText(record, text);
}

/// The text fails as a `T`, for this reason at this place.
template <Record T>
void expectFailure(std::string text, DecodingError::Kind kind, std::string_view path) {
    auto ignored = emptyRecord<T>();
    const auto error = decode(text, ignored);
    ASSERT_TRUE(error) << text;
    EXPECT_EQ(error->kind, kind) << error->description();
    EXPECT_EQ(error->path, path) << error->description();
}

/// The record read from a text that must decode.
template <Record T>
T decoded(std::string text) {
    auto record = emptyRecord<T>();
    const auto error = decode(text, record);
    EXPECT_FALSE(error) << error->description();
    return record;
}

}  // namespace baseapi
