#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace baseapi::inline v1 {

/// A persistent store of small values by key. Calls are safe from any thread and from several processes at
/// once; what a call has written is there after the process was killed.
class KeyValueStore {
  public:
    /// Stored as they are.
    struct Bytes {
        std::string bytes;
    };
    /// Arrays and maps are stored as JSON text.
    struct Json {
        std::string text;
    };
    /// What a key can hold.
    using Value = std::variant<std::string, std::int64_t, bool, double, Json, Bytes>;

    virtual ~KeyValueStore() = default;

    /// Absent where nothing is stored under the key, or the store cannot be read.
    virtual std::optional<Value> get(std::string_view key) = 0;
    /// Replaces any earlier value of the key, of whatever kind. What cannot be written is dropped.
    virtual void put(std::string_view key, const Value& value) = 0;
    /// Nothing happens where the key holds nothing.
    virtual void remove(std::string_view key) = 0;
    /// Removes all values.
    virtual void clear() = 0;
    /// Asks the store to write out now.
    virtual void sync() = 0;
};

}  // namespace baseapi::inline v1
