#pragma once

#include <array>
#include <atomic>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace baseapi::inline v1 {

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
    textEnumeration,
    numberEnumeration,
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
    /// Gives it the empty value of its type; none for records.
    void (*zero)(void* value) = nullptr;
    const Type* element = nullptr;
    const ArrayAccess* array = nullptr;
    const RecordCodec& (*record)() = nullptr;
    /// Of an enumeration of texts, in the order of its cases.
    std::span<const std::string_view> texts = {};
    /// Of an enumeration of numbers.
    std::span<const int> numbers = {};
    /// The case that all other numbers are.
    int unknown = 0;
};

/// How a field that may be absent is looked at, whatever holds its value.
struct Presence {
    /// Puts a new value in place of what is there.
    void* (*engage)(void* holder);
    void (*reset)(void* holder);
    /// The value, or null where it is absent.
    const void* (*peek)(const void* holder);
    /// Whether the holder is a `std::optional`.
    bool inPlace;
    /// What a value costs beyond the record itself.
    std::size_t heapSize;
};

/// A key as it stands in a text, ready to be compared and copied word by word.
class Key {
  public:
    /// Shorter than the room that the parser needs behind a text.
    static constexpr std::size_t longest = 48;

    explicit Key(std::string_view name);

    std::string_view name() const { return {text_.data() + 1, length_ - 3}; }
    /// Copies the key in quotes, with its colon; gives the place behind it. Needs `room`.
    char* copyTo(char* target) const {
        constexpr std::size_t word = 16;
        for (std::size_t done = 0; done < length_; done += word) {
            std::memcpy(target + done, text_.data() + done, word);
        }
        return target + length_;
    }
    static constexpr std::size_t room = longest + 32;

    /// Whether `raw`, the text behind the opening quote of a key, is this key. Looks at no more than 8 bytes
    /// behind the key's own length.
    bool matches(const char* raw) const {
        const char* own = text_.data() + 1;
        for (std::size_t word = 0; word < wholeWords_; ++word, raw += 8, own += 8) {
            if (load(raw) != load(own)) return false;
        }
        return ((load(raw) ^ load(own)) & lastWord_) == 0;
    }

  private:
    static std::uint64_t load(const char* bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof(word));
        return word;
    }

    std::array<char, room> text_{};
    std::size_t length_;
    /// What `matches` compares: so many words, and of the one behind them the bytes in the mask.
    std::size_t wholeWords_;
    std::uint64_t lastWord_;
};

/// The type of a field's value, and null or how the field is looked at where it may be absent.
struct FieldType {
    const Type* type;
    const Presence* presence;
};

struct Field {
    Key key;
    std::size_t offset;
    const Type* type;
    /// Null for a field that cannot be absent.
    const Presence* presence;

    /// Whether reading it again would leave parts of the first value.
    bool mergesWhenReadTwice() const { return presence == nullptr && type->kind == Kind::record; }
    bool mustBeThere() const { return presence == nullptr && type->kind != Kind::lenientInt64; }
};

/// The fields of a record while its table is made. Each field of each record is a call of `add`, so that its
/// arguments are what costs least code.
struct FieldList {
    std::vector<Field> fields;

    void add(const char* key, std::ptrdiff_t offset, const FieldType& type);
};

/// What the declaration of a record says.
struct RecordDescription {
    std::string_view name;
    /// Missing keys leave the defaults in place.
    bool lenient;
    /// Gives a record the content of a new one.
    void (*renew)(void* record);
    void (*listFields)(FieldList& fields);
};

/// Makes the codec, unless another thread has just made it, and keeps it for the life of the process.
const RecordCodec& makeCodec(std::atomic<const RecordCodec*>& codec, const RecordDescription& description);

}  // namespace json

/// What the reader and the writer know of a record type; made once for each type, on first use.
struct RecordCodec {
    static constexpr std::size_t maxFields = 128;
    static constexpr std::size_t notFound = maxFields;
    using FieldSet = std::bitset<maxFields>;

    explicit RecordCodec(const json::RecordDescription& description);

    /// The place of a key in `fields`, or `notFound`.
    std::size_t find(std::string_view key) const;

    /// The place of the field that came after the one at `place` the last time; texts of one service repeat
    /// themselves. `notFound` stands before the first field.
    std::size_t followerOf(std::size_t place) const {
        return followers_[place].load(std::memory_order_relaxed);
    }
    void setFollower(std::size_t place, std::size_t follower) const {
        followers_[place].store(static_cast<std::uint8_t>(follower), std::memory_order_relaxed);
    }

    std::string_view name;
    void (*renew)(void* record);
    std::vector<json::Field> fields;
    /// Missing keys leave the defaults in place.
    bool lenient;
    /// The keys that a strict text has to have.
    FieldSet required;

  private:
    static std::size_t hash(std::string_view key);

    /// Open addressing; a free slot holds `notFound`.
    std::array<std::uint8_t, 2 * maxFields> slots_;
    mutable std::array<std::atomic<std::uint8_t>, maxFields + 1> followers_;
};

}  // namespace baseapi::inline v1
