#pragma once

#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillbox {

/// Why an upload, or a run of the contacts, failed: read from the library's log lines as they pass, since the
/// library's own last event does not tell. Serves one at a time. Callable from any thread.
class UploadCause {
  public:
    /// One log line in pieces.
    void read(std::span<const std::string_view> pieces);
    /// What the host itself knows of the failure, in words.
    void say(const std::string& cause);

    /// Another upload begins.
    void reset();
    /// The first cause since then, such as "the service refused to create it: 507 quota exceeded".
    std::optional<std::string> cause() const;

  private:
    void readWhole(std::string_view line);

    mutable std::mutex mutex_;
    std::optional<std::string> cause_;
    /// The last answer to a create request, for it may turn out to be a refusal.
    std::string creation_;
};

/// A failure of a service call in words: "to create it" with 507 and "quota exceeded" gives "the service
/// refused to create it: 507 quota exceeded". The aim may be a noun too, as in "the sign-in".
std::string failureText(const std::string& aim, std::int64_t code, const std::string& message);

/// The same from "507, msg = quota exceeded", as a log line ends that tells of a failure.
std::string refusalText(const std::string& aim, std::string_view codeAndMessage);

/// One line of the log in one piece.
std::string joinedLine(std::span<const std::string_view> pieces);

}  // namespace quillbox
