#pragma once

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>

namespace quillbox {

/// Standard output or standard error, written at once and in whole lines.
class Stream {
  public:
    explicit Stream(int descriptor);

    /// After an error nothing more is written.
    void write(std::string_view text);

    bool isTerminal() const { return terminal_; }
    /// A terminal that shows colours, and a user who has not set `NO_COLOR`.
    bool hasColours() const { return colours_; }
    /// The terminal's columns.
    std::size_t width() const;

    /// The reader is gone.
    bool unread() const;
    /// Why the last write failed, empty where none has; a reader that is gone is no error.
    std::string error() const;

  private:
    const int descriptor_;
    const bool terminal_;
    const bool colours_;
    std::atomic<int> error_{0};
};

/// Waits until there is room: the other end may be a pipe that another program has set not to wait.
void waitForRoom(int descriptor);

}  // namespace quillbox
