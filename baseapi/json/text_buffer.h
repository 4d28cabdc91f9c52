#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace baseapi::inline v1::json {

/// Collects small pieces before they go to the end of a string, so that a piece costs no more than its bytes.
/// The string is complete after `flush`.
class TextBuffer {
  public:
    explicit TextBuffer(std::string& text) : text_(text) {}

    /// The place for the next `count` bytes, at most `longest`; they are part of the text after `advance`.
    char* place(std::size_t count) {
        if (static_cast<std::size_t>(piece_.data() + piece_.size() - at_) < count) flush();
        return at_;
    }
    void advance(const char* end) { at_ += end - at_; }
    static constexpr std::size_t longest = 1024;
    static constexpr std::size_t mostExpected = std::size_t{1} << 20;

    void put(char byte) {
        *place(1) = byte;
        ++at_;
    }
    void put(std::string_view piece) {
        if (piece.size() > longest) {
            flush();
            text_.append(piece);
        } else {
            std::memcpy(place(piece.size()), piece.data(), piece.size());
            at_ += piece.size();
        }
    }
    std::size_t size() const { return text_.size() + static_cast<std::size_t>(at_ - piece_.data()); }
    /// Says that about so many bytes will follow, so that a long text does not grow step by step. A guess:
    /// more than a mebibyte ahead is not taken for it.
    void expect(std::size_t count) {
        if (count > longest) text_.reserve(size() + std::min(count + count / 8, mostExpected));
    }
    /// Ends a list whose items each ended in a comma.
    void close(char bracket) {
        if (at_ == piece_.data()) {
            if (text_.back() == ',') text_.pop_back();
        } else if (at_[-1] == ',') {
            --at_;
        }
        put(bracket);
    }
    void flush() {
        text_.append(piece_.data(), at_);
        at_ = piece_.data();
    }

  private:
    std::string& text_;
    std::array<char, 4 * longest> piece_;
    char* at_ = piece_.data();
};

}  // namespace baseapi::inline v1::json
