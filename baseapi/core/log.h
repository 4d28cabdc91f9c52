#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// One piece of a log line: a text that lives as long as the call, or a number with the room for its digits.
class LogPiece {
  public:
    template <class Text>
    requires std::convertible_to<const Text&, std::string_view> LogPiece(const Text& text)
        : text_(text) {}  // NOLINT(google-explicit-constructor)
    LogPiece(std::same_as<bool> auto value)
        : text_(value ? "true" : "false") {}  // NOLINT(google-explicit-constructor)
    template <class Number>
    requires(std::integral<Number> || std::floating_point<Number>) &&
        (!std::same_as<Number, bool>)LogPiece(Number value) {  // NOLINT(google-explicit-constructor)
        const auto end = std::to_chars(digits_.data(), digits_.data() + digits_.size(), value).ptr;
        length_ = static_cast<std::size_t>(end - digits_.data());
    }

    std::string_view view() const { return length_ > 0 ? std::string_view(digits_.data(), length_) : text_; }

  private:
    std::array<char, 32> digits_;
    std::size_t length_ = 0;
    std::string_view text_;
};

/// Hands one line to the log sink, its pieces unjoined.
void logPieces(std::initializer_list<std::string_view> pieces);

template <class... Pieces>
void logLine(const Pieces&... pieces) {
    logPieces({LogPiece(pieces).view()...});
}

}  // namespace baseapi::inline v1
