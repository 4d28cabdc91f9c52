#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillboxd/call.h"

namespace quillboxd {

/// The number that a text says in decimal digits; throws for what says none, in the words of `what`.
std::int64_t numberIn(std::string_view text, std::string_view what);

/// The value of a query parameter that must be there, and may be empty.
std::string requiredParameter(const Call& call, std::string_view name);

}  // namespace quillboxd
