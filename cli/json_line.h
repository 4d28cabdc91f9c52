#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillbox {

/// A text as it stands between the quotes of a JSON string.
std::string jsonEscaped(std::string_view text);

/// One JSON object on one line, its keys in the order in which they were added.
class JsonLine {
  public:
    /// A text that is JSON already.
    struct Json {
        std::string text;
    };
    using Value = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, Json>;

    JsonLine() = default;
    /// An object whose first key says which event it is.
    explicit JsonLine(std::string_view event) { add("event", event); }

    template <class T>
    JsonLine& add(std::string_view key, const T& value) {
        fields_.emplace_back(std::string(key), wrapped(value));
        return *this;
    }

    /// `mask` is applied to each text, those inside a `Json` included.
    std::string text(const std::function<std::string(std::string)>& mask) const;
    std::string text() const {
        return text([](std::string same) { return same; });
    }

  private:
    static Value wrapped(std::nullptr_t) { return nullptr; }
    static Value wrapped(bool value) { return value; }
    static Value wrapped(double value) { return value; }
    template <std::integral Number>
    static Value wrapped(Number value) {
        return static_cast<std::int64_t>(value);
    }
    static Value wrapped(std::string_view value) { return std::string(value); }
    static Value wrapped(const std::string& value) { return value; }
    static Value wrapped(const char* value) { return std::string(value); }
    static Value wrapped(const Json& value) { return value; }
    template <class T>
    static Value wrapped(const std::optional<T>& value) {
        return value ? wrapped(*value) : Value{nullptr};
    }

    std::vector<std::pair<std::string, Value>> fields_;
};

/// JSON text with `mask` applied to each text that is a value.
std::string masked(std::string_view json, const std::function<std::string(std::string)>& mask);

/// JSON text over several lines, for people.
std::string indented(std::string_view json);

}  // namespace quillbox
