#pragma once

#include <concepts>
#include <string_view>

/// A record is a plain struct with public fields in wire order and, under them, one list of their names:
///
///     struct PageInfo {
///         std::int64_t pageSize = 0;
///         std::optional<std::string> pageCursor;
///
///         BASEAPI_FIELDS(PageInfo, pageSize, pageCursor)
///     };
///
/// Each field is spelled as its key on the wire, misspellings included. Everything else (decoding, encoding,
/// equality, the command line's view of the record) comes from that list. `std::optional` says "may be
/// absent". The list of a record with a base names the base, whose fields share the same JSON object:
///
///     BASEAPI_FIELDS_OF(FileBean, BaseFileBean, updateTime, namePath)
///
/// A record whose missing keys leave the defaults in place says so beside its list:
///
///     static constexpr bool lenient = true;
///
/// One that a host can only make with its fields given keeps its default constructor private and says beside
/// its list:
///
///     static GetShareBean empty() { return {}; }
///
/// A field may be an `enum class` whose cases are texts on the wire. They stand in the order of the cases in
/// a function beside it:
///
///     friend constexpr auto wireTexts(Access) { return std::array<std::string_view, 2>{"READ", "WRITE"}; }
///
/// Or its cases are their own numbers, which stand in a function beside it, and a case `unknown` is read for
/// every other 64-bit integer; a number that is none fails the record:
///
///     friend constexpr auto wireNumbers(Outcome) { return std::array{0, 1, 2}; }

#define BASEAPI_FIELDS(Type, ...)                                              \
    static constexpr std::string_view recordName = #Type;                      \
    template <class Visit>                                                     \
    static constexpr void fields([[maybe_unused]] Visit&& visit) {             \
        BASEAPI_FOR_EACH(BASEAPI_VISIT_FIELD, Type __VA_OPT__(, ) __VA_ARGS__) \
    }

#define BASEAPI_FIELDS_OF(Type, Base, ...)                                     \
    static constexpr std::string_view recordName = #Type;                      \
    template <class Visit>                                                     \
    static constexpr void fields(Visit&& visit) {                              \
        BASEAPI_FOR_EACH(BASEAPI_VISIT_FIELD, Type __VA_OPT__(, ) __VA_ARGS__) \
        Base::fields(visit);                                                   \
    }

/// Names the operations of a service interface in the order of the interface, for whoever lists or calls them
/// by name.
#define BASEAPI_OPERATIONS(Type, ...)                                          \
    static constexpr std::string_view interfaceName = #Type;                   \
    template <class Visit>                                                     \
    static constexpr void operations([[maybe_unused]] Visit&& visit) {         \
        BASEAPI_FOR_EACH(BASEAPI_VISIT_FIELD, Type __VA_OPT__(, ) __VA_ARGS__) \
    }

#define BASEAPI_VISIT_FIELD(Type, name) visit(#name, &Type::name);

#define BASEAPI_PARENS ()
#define BASEAPI_EXPAND(...) BASEAPI_EXPAND3(BASEAPI_EXPAND3(BASEAPI_EXPAND3(BASEAPI_EXPAND3(__VA_ARGS__))))
#define BASEAPI_EXPAND3(...) BASEAPI_EXPAND2(BASEAPI_EXPAND2(BASEAPI_EXPAND2(BASEAPI_EXPAND2(__VA_ARGS__))))
#define BASEAPI_EXPAND2(...) BASEAPI_EXPAND1(BASEAPI_EXPAND1(BASEAPI_EXPAND1(BASEAPI_EXPAND1(__VA_ARGS__))))
#define BASEAPI_EXPAND1(...) __VA_ARGS__
#define BASEAPI_FOR_EACH(macro, type, ...) \
    __VA_OPT__(BASEAPI_EXPAND(BASEAPI_FOR_EACH_STEP(macro, type, __VA_ARGS__)))
#define BASEAPI_FOR_EACH_STEP(macro, type, first, ...) \
    macro(type, first) __VA_OPT__(BASEAPI_FOR_EACH_AGAIN BASEAPI_PARENS(macro, type, __VA_ARGS__))
#define BASEAPI_FOR_EACH_AGAIN() BASEAPI_FOR_EACH_STEP

namespace baseapi::inline v1 {

/// A struct with a list of fields, as above.
template <class T>
concept Record = requires {
    { T::recordName } -> std::convertible_to<std::string_view>;
    T::fields([](std::string_view, auto) {});
};

/// A record that nothing has been put into.
template <Record T>
T emptyRecord() {
    if constexpr (std::default_initializable<T>) {
        return T{};
    } else {
        return T::empty();
    }
}

/// Two records are equal when all their fields are, the base's included.
template <Record T>
constexpr bool operator==(const T& left, const T& right) {
    bool equal = true;
    T::fields([&](std::string_view, auto member) { equal = equal && left.*member == right.*member; });
    return equal;
}

}  // namespace baseapi::inline v1
