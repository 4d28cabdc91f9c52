#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillboxd/call.h"
#include "quillboxd/store/backup_devices.h"

namespace quillboxd::backup {

/// The number that a text says in decimal digits; throws for what says none, in the words of `what`.
std::int64_t numberIn(std::string_view text, std::string_view what);

/// The value of a query parameter that must be there, and may be empty.
std::string requiredParameter(const Call& call, std::string_view name);

/// The header that carries the lock id; throws where it is missing.
std::string lockId(const Call& call);

/// The members of a device. Its id stands beside them as a number or as a text, as the call has it.
json::object deviceFields(const Device& device);

}  // namespace quillboxd::backup
