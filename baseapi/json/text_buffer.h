#pragma once

#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace baseapi::json {

/// Appends to a string through a bare pointer, so that small pieces cost no more than their bytes. The string
/// has its right length again after `finish`.
class TextBuffer {
  public:
    explicit TextBuffer(std::string& text) : text_(text), at_(text.size()) {}

    /// Room for `count` bytes more; what is written there counts after `advance`.
    char* room(std::size_t count) {
        if (text_.size() - at_ < count) grow(count);
        return text_.data() + at_;
    }
    void advance(std::size_t count) { at_ += count; }

    void append(std::string_view piece) {
        std::memcpy(room(piece.size()), piece.data(), piece.size());
        at_ += piece.size();
    }
    void append(char byte) {
        *room(1) = byte;
        ++at_;
    }
    template <class Number>
    void appendNumber(Number value) {
        constexpr std::size_t longest = 32;
        char* start = room(longest);
        at_ += static_cast<std::size_t>(std::to_chars(start, start + longest, value).ptr - start);
    }
    /// Ends a list whose items each ended in a comma.
    void close(char bracket) {
        if (text_[at_ - 1] == ',') --at_;
        append(bracket);
    }
    void finish() { text_.resize(at_); }

  private:
    void grow(std::size_t count) { text_.resize(std::max(text_.capacity(), 2 * text_.size()) + count); }

    std::string& text_;
    std::size_t at_;
};

}  // namespace baseapi::json
