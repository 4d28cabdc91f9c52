#pragma once

#include <string>

#include "quillboxd/call.h"
#include "quillboxd/store/backup_devices.h"

namespace quillboxd::backup {

/// The header that carries the lock id; throws where it is missing.
std::string lockId(const Call& call);

/// The members of a device. Its id stands beside them as a number or as a text, as the call has it.
json::object deviceFields(const Device& device);

}  // namespace quillboxd::backup
