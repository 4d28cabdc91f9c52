#pragma once

#include <string_view>

namespace baseapi {

/// Ends the process with `text` on standard error: a value that must not be absent was, which is a
/// programming error.
[[noreturn]] void fatalStop(std::string_view text);

}  // namespace baseapi
