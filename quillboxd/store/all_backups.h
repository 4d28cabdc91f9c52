#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "quillboxd/store/backup_records.h"

namespace quillboxd {

/// A record, with whose it is and what it has come to.
struct SomebodysRecord {
    BackupRecord record;
    std::int64_t account = 0;
    std::string accountName;
    std::optional<std::string> deviceName;  ///< of a device that is bound under a name
    std::int64_t files = 0;                 ///< whose content has arrived
};

struct SomebodysLock {
    std::int64_t account = 0;
    std::string accountName;
    std::string module;
    std::string id;
    bool used = false;
    std::string until;
};

/// The backups of all accounts together.
class AllBackups {
  public:
    explicit AllBackups(Database& database) : database_(database) {}

    /// The newest first, from the one before the id `before`.
    std::vector<SomebodysRecord> records(std::int64_t before, std::int64_t count);

    /// At a time in seconds since 1970, by account and module.
    std::vector<SomebodysLock> locksInForce(std::int64_t time);

  private:
    Database& database_;
};

}  // namespace quillboxd
