#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "baseapi/json/codec.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/lenient_int64.h"
#include "baseapi/json/record.h"
#include "baseapi/json/shared.h"

namespace baseapi::sample {

using baseapi::operator==;

struct Leaf {
    std::int64_t size = 0;
    std::optional<std::string> name;

    BASEAPI_FIELDS(Leaf, size, name)
};

struct Base {
    std::optional<std::int64_t> code;
    std::optional<std::string> msg;

    BASEAPI_FIELDS(Base, code, msg)
};

/// Records inside records, under a base.
struct Tree : Base {
    std::optional<std::vector<Leaf>> files;
    std::optional<Leaf> leaf;
    std::optional<std::vector<Tree>> trees;

    BASEAPI_FIELDS_OF(Tree, Base, files, leaf, trees)
};

struct Page {
    std::int64_t pageSize = 0;
    std::optional<std::string> pageCursor;

    BASEAPI_FIELDS(Page, pageSize, pageCursor)
};

/// Missing keys leave the defaults.
struct Sparse {
    static constexpr bool lenient = true;

    bool favorite = false;
    std::int64_t size = 0;
    std::optional<std::string> id;

    BASEAPI_FIELDS(Sparse, favorite, size, id)
};

struct Device {
    LenientInt64 deviceId;
    std::string createTime;

    BASEAPI_FIELDS(Device, deviceId, createTime)
};

/// An enumeration of texts, both where it can be absent and where it cannot.
struct Lamp {
    enum class Colour { red, green };
    friend constexpr auto wireTexts(Colour) { return std::array<std::string_view, 2>{"RED", "GREEN"}; }

    Colour colour = Colour::red;
    std::optional<Colour> before;

    BASEAPI_FIELDS(Lamp, colour, before)
};

/// An enumeration of numbers, both where it can be absent and where it cannot.
struct Valve {
    enum class State { shut, open, stuck = 7, unknown = -3 };
    friend constexpr auto wireNumbers(State) { return std::array{0, 1, 7}; }

    State state = State::unknown;
    std::optional<State> before;

    BASEAPI_FIELDS(Valve, state, before)
};

/// Made only with its field given.
struct Ticket {
    explicit Ticket(std::int64_t newNumber) : number(newNumber) {}
    static Ticket empty() { return Ticket(0); }

    std::int64_t number;

    BASEAPI_FIELDS(Ticket, number)
};

/// One field of every other kind that a record can have, both where it can be absent and where it cannot.
struct Everything {
    std::string text;
    std::int64_t integer = 0;
    std::uint32_t small = 0;
    double real = 0;
    bool truth = false;
    Leaf leaf;
    std::vector<std::string> texts;
    std::map<std::string, std::string> labels;
    JSONValue any;
    LenientInt64 device;
    AnyMap attributes;
    std::optional<std::string> maybeText;
    std::optional<std::int64_t> maybeInteger;
    std::optional<std::uint32_t> maybeSmall;
    std::optional<double> maybeReal;
    std::optional<bool> maybeTruth;
    std::optional<Leaf> maybeLeaf;
    std::optional<std::vector<Leaf>> maybeLeaves;
    std::optional<std::vector<std::int64_t>> maybeIntegers;
    std::optional<std::vector<std::vector<double>>> maybeMatrix;
    std::optional<std::map<std::string, std::string>> maybeLabels;
    std::optional<JSONValue> maybeAny;
    Shared<Leaf> sharedLeaf;
    Shared<std::vector<Leaf>> sharedLeaves;
    std::optional<AnyMap> properties;
    std::optional<FlatMap> flat;
    std::optional<EmbeddedMap> embedded;
    std::optional<EmbeddedDocument> document;

    BASEAPI_FIELDS(Everything, text, integer, small, real, truth, leaf, texts, labels, any, device,
                   attributes, maybeText, maybeInteger, maybeSmall, maybeReal, maybeTruth, maybeLeaf,
                   maybeLeaves, maybeIntegers, maybeMatrix, maybeLabels, maybeAny, sharedLeaf, sharedLeaves,
                   properties, flat, embedded, document)
};

}  // namespace baseapi::sample
