#pragma once

#include <span>
#include <string_view>

namespace baseapi::inline v1 {

/// Takes the library's log lines. URLs, headers with the token, and bodies are among them.
class LogSink {
  public:
    virtual ~LogSink() = default;

    /// One line, without its line end, in pieces that follow each other directly; they live as long as the
    /// call. Called from any thread and from several at once: each line must stay whole.
    virtual void line(std::span<const std::string_view> pieces) noexcept = 0;
};

}  // namespace baseapi::inline v1
