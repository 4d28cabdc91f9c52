#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace baseapi {

struct RecordCodec;

namespace json {

/// Containers inside containers, as many as a text may have. The routines call themselves once a level, so
/// this also bounds the stack.
inline constexpr int maxDepth = 512;

enum class Kind : std::uint8_t {
    string,
    int64,
    uint32,
    real,
    boolean,
    lenientInt64,
    record,
    array,
    stringMap,
    json,
    anyMap,
    flatMap,
    embeddedMap,
    embeddedDocument,
};

/// How an array of any element type is filled and walked.
struct ArrayAccess {
    void (*clear)(void* array);
    void (*reserve)(void* array, std::size_t count);
    void* (*append)(void* array);
    std::size_t (*size)(const void* array);
    const void* (*data)(const void* array);
};

/// A type of value, as the reader and the writer see it.
struct Type {
    Kind kind;
    std::size_t size;
    /// Gives the value it has in a new record; only for scalars.
    void (*zero)(void* value) = nullptr;
    const Type* element = nullptr;
    const ArrayAccess* array = nullptr;
    const RecordCodec& (*record)() = nullptr;
};

/// How a field that may be absent is looked at, whatever holds its value.
struct Presence {
    /// Puts a new value in place of what is there.
    void* (*engage)(void* holder);
    void (*reset)(void* holder);
    /// The value, or null where it is absent.
    const void* (*peek)(const void* holder);
    /// What a value costs beyond the record itself.
    std::size_t heapSize;
};

struct Field {
    /// As it is written: in quotes, with the colon.
    std::string quotedKey;
    std::size_t offset;
    const Type* type;
    /// Null for a field that cannot be absent.
    const Presence* presence;

    /// Whether `raw`, the text behind a key's opening quote, is this key. Looks no further behind `raw` than
    /// the key is long.
    bool matches(const char* raw) const {
        return std::memcmp(raw, quotedKey.data() + 1, quotedKey.size() - 2) == 0;
    }
    std::string_view key() const { return std::string_view(quotedKey).substr(1, quotedKey.size() - 3); }
};

}  // namespace json

/// What the reader and the writer know of a record type; made once for each type, on first use.
struct RecordCodec {
    static constexpr std::size_t maxFields = 128;
    /// Shorter than the room that the parser needs behind a text.
    static constexpr std::size_t longestKey = 60;
    static constexpr std::size_t notFound = maxFields;

    RecordCodec(std::string_view recordName, bool takesMissingKeys, void (*resetRecord)(void*),
                std::vector<json::Field> recordFields);

    /// The place of a key in `fields`, or `notFound`.
    std::size_t find(std::string_view key) const;

    std::string_view name;
    bool lenient;
    void (*reset)(void* record);
    std::vector<json::Field> fields;

  private:
    static std::size_t hash(std::string_view key);

    /// Open addressing; a free slot holds `notFound`.
    std::array<std::uint8_t, 2 * maxFields> slots_;
};

}  // namespace baseapi
