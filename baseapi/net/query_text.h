#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// Joins the parts of a query with "&", in the order they are given. No value is escaped.
class QueryText {
  public:
    QueryText& add(std::string_view name, std::string_view value);
    QueryText& add(std::string_view name, std::same_as<bool> auto value) {
        return add(name, value ? "true" : "false");
    }
    QueryText& add(std::string_view name, std::same_as<std::int64_t> auto value) {
        return add(name, std::to_string(value));
    }
    /// Leaves out an absent value; an empty one is sent.
    QueryText& addIfPresent(std::string_view name, const std::optional<std::string>& value);
    /// Leaves out an absent value and an empty one.
    QueryText& addIfFilled(std::string_view name, const std::optional<std::string>& value);

    /// Leaves out 0.
    QueryText& addIfNotZero(std::string_view name, std::int64_t value);

    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

}  // namespace baseapi::inline v1
