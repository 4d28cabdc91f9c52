#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/backup/records.h"

namespace quillbox {

class Host;

/// How many contacts the device's last backup holds; absent where there is none, or where that cannot be
/// told. Asks the service. Throws `Interrupted`.
std::optional<std::int64_t> contactsOfLastBackup(const Host& host, std::int64_t deviceId);

/// The same from the records of the device.
std::optional<std::int64_t> contactsOfLastBackup(std::vector<baseapi::RecordDetailBean> records);

/// What people should be warned of before so many contacts become their backup; empty where nothing is odd.
std::string contactWarning(std::int64_t contacts, std::optional<std::int64_t> before);

}  // namespace quillbox
