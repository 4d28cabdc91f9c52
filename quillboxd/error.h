#pragma once

#include <stdexcept>
#include <string>

namespace quillboxd {

/// The number in `code` of an answer that is no plain success.
enum class Code {
    malformed = 13000400,
    unauthorised = 13000401,
    refused = 13000403,
    notFound = 13000404,
    nameExists = 13000405,
    verbNotAllowed = 13000406,
    conflict = 13000409,
    tooLarge = 13000413,
    internal = 13000500,
    overloaded = 13000503,
    spaceFull = 13000507,
};

/// A call that is refused: its HTTP status, and the body's `code` and `msg`.
class ApiError : public std::runtime_error {
  public:
    ApiError(int status, Code code, const std::string& message)
        : std::runtime_error(message), status_(status), code_(code) {}

    int status() const { return status_; }
    Code code() const { return code_; }

  private:
    int status_;
    Code code_;
};

[[noreturn]] inline void badRequest(const std::string& message) {
    throw ApiError(400, Code::malformed, message);
}
[[noreturn]] inline void forbidden(const std::string& message) {
    throw ApiError(403, Code::refused, message);
}
[[noreturn]] inline void notFound(const std::string& message) {
    throw ApiError(404, Code::notFound, message);
}
[[noreturn]] inline void conflict(Code code, const std::string& message) {
    throw ApiError(409, code, message);
}

/// The service cannot start with this command line; the text is one line that says how to mend it.
struct StartError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace quillboxd
