#pragma once

#include <mutex>
#include <string>
#include <vector>

namespace quillbox {

/// Keeps the session's tokens out of what is printed. Callable from any thread.
class TokenMask {
  public:
    /// From now on this token is masked, beside all earlier ones.
    void add(const std::string& token);

    /// The text with "***" in place of each token. A token of fewer than eight characters counts only as a
    /// word of its own: it may be a piece of any other word.
    std::string operator()(std::string text) const;

  private:
    mutable std::mutex mutex_;
    std::vector<std::string> tokens_;
};

}  // namespace quillbox
