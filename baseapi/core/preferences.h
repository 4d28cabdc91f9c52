#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "baseapi/json/codec.h"
#include "baseapi/json/json_value.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// What an array in the preferences can hold.
template <class T>
concept PreferenceElement = std::same_as<T, std::string> || std::same_as<T, std::int64_t> ||
    std::same_as<T, double> || std::same_as<T, bool> || std::same_as<T, JSONValue>;

/// Small values that outlast the process, by key: a typed layer over the platform's store. Callable from any
/// thread. Each `put` writes at once and replaces what the key held, of whatever type; a value of another
/// type than the one asked for reads as if there were none.
///
/// The getters of numbers and booleans take a default that has no effect: a stored 0 and a missing key cannot
/// be told apart by them. `contains` can.
class BASEAPI_API Preferences {
  public:
    /// The process-wide instance; made on first use, never destroyed.
    static Preferences& shared();

    Preferences(const Preferences&) = delete;
    Preferences& operator=(const Preferences&) = delete;

    /// An absent value removes what the key holds.
    void putString(std::string_view key, const std::optional<std::string>& value);
    /// The stored text, or `defaultValue`.
    std::string getString(std::string_view key, std::string defaultValue);

    /// Replaces what the key holds, of whatever type.
    void putInt(std::string_view key, std::int64_t value);
    /// The stored integer, or 0.
    std::int64_t getInt(std::string_view key, std::int64_t defaultValue);

    /// Replaces what the key holds, of whatever type.
    void putBool(std::string_view key, bool value);
    /// The stored boolean, or false.
    bool getBool(std::string_view key, bool defaultValue);

    /// Replaces what the key holds, of whatever type.
    void putDouble(std::string_view key, double value);
    /// The stored number, or 0.
    double getDouble(std::string_view key, double defaultValue);

    /// Replaces what the key holds, of whatever type.
    void putFloat(std::string_view key, float value);
    /// The stored number, or 0.
    float getFloat(std::string_view key, float defaultValue);

    /// An array that has no JSON form (text that is not UTF-8, a number that is none) is not stored.
    template <PreferenceElement T>
    void putArray(std::string_view key, const std::vector<T>& array) {
        JSONValue::Array values;
        for (const auto& element : array) {
            if constexpr (std::same_as<T, JSONValue>)
                values.push_back(element);
            else
                values.push_back({T(element)});
        }
        putJSON(key, {std::move(values)});
    }
    /// The stored array where all its elements are of type `T`, otherwise `defaultValue`. An integer is a
    /// double as well.
    template <PreferenceElement T>
    std::vector<T> getArray(std::string_view key, std::vector<T> defaultValue) {
        const auto stored = getJSON(key);
        const auto* values = stored ? std::get_if<JSONValue::Array>(&stored->value) : nullptr;
        if (values == nullptr) return defaultValue;
        std::vector<T> array;
        for (const auto& value : *values) {
            auto element = as<T>(value);
            if (!element) return defaultValue;
            array.push_back(std::move(*element));
        }
        return array;
    }

    /// A map that has no JSON form is not stored.
    void putDictionary(std::string_view key, const JSONValue::Map& map);
    /// The stored map, or `defaultValue`.
    JSONValue::Map getDictionary(std::string_view key, JSONValue::Map defaultValue);

    /// Stores the record's JSON text. A record that has none is not stored, and nothing is reported.
    template <Record T>
    void putObject(std::string_view key, const T& record) {
        if (auto text = encode(record)) putBytes(key, std::move(*text));
    }
    /// The stored record, or nothing where there is none or it does not decode as a `T`.
    template <Record T>
    std::optional<T> getObject(std::string_view key) {
        auto text = getBytes(key);
        T record;
        if (!text || decode(*text, record)) return std::nullopt;
        return record;
    }

    /// Whether the key holds a value of any type.
    bool contains(std::string_view key);
    /// Removes what the key holds, of whatever type; nothing where it holds none.
    void remove(std::string_view key);
    /// Removes all values, where the platform names the application; otherwise does nothing.
    void clear();
    /// Asks the store to write out now.
    void sync();

  private:
    Preferences() = default;

    template <class T>
    static std::optional<T> as(const JSONValue& value) {
        if constexpr (std::same_as<T, JSONValue>)
            return value;
        else if (const auto* held = std::get_if<T>(&value.value))
            return *held;
        else if constexpr (std::same_as<T, double>) {
            if (const auto* integer = std::get_if<std::int64_t>(&value.value))
                return static_cast<double>(*integer);
        }
        return std::nullopt;
    }

    void putJSON(std::string_view key, JSONValue value);
    std::optional<JSONValue> getJSON(std::string_view key);
    void putBytes(std::string_view key, std::string bytes);
    std::optional<std::string> getBytes(std::string_view key);
};

}  // namespace baseapi::inline v1
