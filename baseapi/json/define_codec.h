#pragma once

#include <atomic>
#include <bit>
#include <concepts>
#include <cstddef>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "baseapi/json/codec.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/lenient_int64.h"
#include "baseapi/json/record.h"
#include "baseapi/json/schema.h"
#include "baseapi/json/shared.h"

/// The definition of `codecOf`, for the one source file of a family that compiles its codecs:
///
///     #include "baseapi/json/define_codec.h"
///
///     template BASEAPI_API const RecordCodec& codecOf<FilesListBean>();
///
/// Records inside records follow by themselves, but are not exported by that.

namespace baseapi::inline v1 {
namespace json {

template <class T>
concept IntEnumeration = requires {
    { std::underlying_type_t<T>() } -> std::same_as<int>;
};

/// Its cases are 0 and so on, each the place of its text.
template <class T>
concept TextEnumeration = IntEnumeration<T> && requires {
    wireTexts(T{});
};
template <TextEnumeration T>
[[gnu::visibility("hidden")]] inline constexpr auto textsOf = wireTexts(T{});

/// Its cases are their numbers.
template <class T>
concept NumberEnumeration = IntEnumeration<T> && requires {
    wireNumbers(T{});
    T::unknown;
};
template <NumberEnumeration T>
[[gnu::visibility("hidden")]] inline constexpr auto numbersOf = wireNumbers(T{});

template <class T>
struct KindOf;
template <Kind value>
using Is = std::integral_constant<Kind, value>;

// clang-format off
template <> struct KindOf<std::string> : Is<Kind::string> {};
template <> struct KindOf<std::int64_t> : Is<Kind::int64> {};
template <> struct KindOf<std::uint32_t> : Is<Kind::uint32> {};
template <> struct KindOf<double> : Is<Kind::real> {};
template <> struct KindOf<bool> : Is<Kind::boolean> {};
template <> struct KindOf<LenientInt64> : Is<Kind::lenientInt64> {};
template <> struct KindOf<std::map<std::string, std::string>> : Is<Kind::stringMap> {};
template <> struct KindOf<JSONValue> : Is<Kind::json> {};
template <> struct KindOf<AnyMap> : Is<Kind::anyMap> {};
template <> struct KindOf<FlatMap> : Is<Kind::flatMap> {};
template <> struct KindOf<EmbeddedMap> : Is<Kind::embeddedMap> {};
template <> struct KindOf<EmbeddedDocument> : Is<Kind::embeddedDocument> {};
template <TextEnumeration T> struct KindOf<T> : Is<Kind::textEnumeration> {};
template <NumberEnumeration T> struct KindOf<T> : Is<Kind::numberEnumeration> {};
template <Record T> struct KindOf<T> : Is<Kind::record> {};
template <class T> struct KindOf<std::vector<T>> : Is<Kind::array> {};
// clang-format on

template <class Array>
inline constexpr ArrayAccess arrayAccess = {
    [](void* array) { static_cast<Array*>(array)->clear(); },
    [](void* array, std::size_t count) { static_cast<Array*>(array)->reserve(count); },
    [](void* array) -> void* { return &static_cast<Array*>(array)->emplace_back(); },
    [](const void* array) { return static_cast<const Array*>(array)->size(); },
    [](const void* array) -> const void* { return static_cast<const Array*>(array)->data(); },
};

template <Record T>
const RecordCodec& onlyCodec();

template <class T>
constexpr Type describe();
template <class T>
inline constexpr Type typeOf = describe<T>();

template <class T>
constexpr Type describe() {
    Type type{KindOf<T>::value, sizeof(T)};
    if constexpr (KindOf<T>::value == Kind::record) {
        type.record = &onlyCodec<T>;
    } else {
        type.zero = [](void* value) { *static_cast<T*>(value) = T{}; };
    }
    if constexpr (KindOf<T>::value == Kind::array) {
        static_assert(!std::same_as<T, std::vector<bool>>, "its elements have no address");
        type.element = &typeOf<typename T::value_type>;
        type.array = &arrayAccess<T>;
    }
    if constexpr (KindOf<T>::value == Kind::textEnumeration) type.texts = textsOf<T>;
    if constexpr (KindOf<T>::value == Kind::numberEnumeration) {
        type.numbers = numbersOf<T>;
        type.unknown = static_cast<int>(T::unknown);
    }
    return type;
}

template <class Holder>
inline constexpr Presence presenceOf = {
    [](void* holder) -> void* { return &static_cast<Holder*>(holder)->emplace(); },
    [](void* holder) { static_cast<Holder*>(holder)->reset(); },
    [](const void* holder) -> const void* {
        const auto& value = *static_cast<const Holder*>(holder);
        return value ? &*value : nullptr;
    },
    std::same_as<Holder, std::optional<typename Holder::value_type>>,
    std::same_as<Holder, std::optional<typename Holder::value_type>> ? 0
                                                                     : sizeof(typename Holder::value_type),
};

/// Only a value that may be absent can be passed over.
template <class T>
concept OnlyOptional =
    std::same_as<T, FlatMap> || std::same_as<T, EmbeddedMap> || std::same_as<T, EmbeddedDocument>;

template <class Pointer>
struct MemberType;
template <class M, class T>
struct MemberType<M T::*> {
    using type = M;
};
template <class Pointer>
using MemberOf = typename MemberType<Pointer>::type;

template <class T>
struct FieldTypeOf {
    static_assert(!OnlyOptional<T>, "has to be a std::optional");
    static constexpr FieldType value{&typeOf<T>, nullptr};
};
template <class T>
struct FieldTypeOf<std::optional<T>> {
    static constexpr FieldType value{&typeOf<T>, &presenceOf<std::optional<T>>};
};
template <class T>
struct FieldTypeOf<Shared<T>> {
    static constexpr FieldType value{&typeOf<T>, &presenceOf<Shared<T>>};
};

/// Gives a record the content of a new one, in its place: an assignment would be code that nothing else
/// needs.
template <Record T>
void renew(void* place) noexcept {
    std::destroy_at(static_cast<T*>(place));
    ::new (place) T(emptyRecord<T>());
}

template <Record T>
void listFields(FieldList& fields) {
    T::fields([&](const char* key, auto member) {
        const auto own = static_cast<MemberOf<decltype(member)> T::*>(member);
        // What a pointer to a data member holds, with g++ and clang on every system, is the member's place.
        fields.add(key, std::bit_cast<std::ptrdiff_t>(own), FieldTypeOf<MemberOf<decltype(member)>>::value);
    });
}

template <class T>
concept Lenient = requires {
    requires T::lenient;
};

template <Record T>
inline constexpr RecordDescription descriptionOf = {T::recordName, Lenient<T>, &renew<T>, &listFields<T>};

template <Record T>
const RecordCodec& onlyCodec() {
    static constinit std::atomic<const RecordCodec*> codec = nullptr;
    const auto* made = codec.load(std::memory_order_acquire);
    return made != nullptr ? *made : makeCodec(codec, descriptionOf<T>);
}

}  // namespace json

template <Record T>
const RecordCodec& codecOf() {
    return json::onlyCodec<T>();
}

}  // namespace baseapi::inline v1
