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

/// The number of a query parameter; `otherwise` where it is absent or empty.
std::int64_t integerParameter(const Call& call, std::string_view name, std::int64_t otherwise);

/// How many entries a page has that was asked for with this size: 1,000 at most. Throws for none.
std::int64_t pageSize(std::int64_t asked, std::string_view key);

}  // namespace quillboxd
