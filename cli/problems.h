#pragma once

#include <cstdint>
#include <string>

namespace quillbox {

// What ends a command early. They are thrown inside the program and become an exit status in one place
// (run.cpp).

/// The command line cannot be used: why, and how to mend it, in one line.
struct UsageError {
    std::string text;
};

/// The service, or the way to it, failed. `what` names what was to be done, such as "making the folder".
struct ServiceFailure {
    std::string what;
    std::int64_t code = -1;
    std::string message;
};

/// No answer came in time.
struct NoAnswer {
    std::string what;
};

/// The work ends because of Ctrl-C.
struct Interrupted {};

}  // namespace quillbox
