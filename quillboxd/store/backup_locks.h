#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillboxd {

class Database;

/// The locks of an account's backups, one for each module at most.
class BackupLocks {
  public:
    /// A run may go on for hours without renewing its lock.
    static constexpr std::int64_t lifetime = 24 * 60 * 60;  // seconds

    BackupLocks(Database& database, std::int64_t account) : database_(database), account_(account) {}

    /// A new lock; throws where another is in force. One that was never used gives way to the token that took
    /// it: its answer may not have arrived.
    std::string take(std::string_view module, std::string_view token);

    // Each of these throws for an id that is none of this account's, `renew` and `require` also for a lock
    // that has expired.
    void renew(std::string_view id);
    void release(std::string_view id);
    /// The lock must be the module's.
    void require(std::string_view id, std::string_view module);

    /// Lets the locks of everybody expire.
    static void expireAll(Database& database);

  private:
    /// The module that the lock is in force for.
    std::string moduleOf(std::string_view id);

    Database& database_;
    std::int64_t account_;
};

}  // namespace quillboxd
