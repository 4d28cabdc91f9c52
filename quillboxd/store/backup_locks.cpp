#include "quillboxd/store/backup_locks.h"

#include "quillboxd/call.h"
#include "quillboxd/crypto/random.h"
#include "quillboxd/crypto/sha256.h"
#include "quillboxd/error.h"
#include "quillboxd/store/database.h"

namespace quillboxd {

std::string BackupLocks::take(std::string_view module, std::string_view token) {
    const auto time = now();
    {
        auto held = database_.query(
            "SELECT 1 FROM locks WHERE account = ? AND module = ? AND expires > ? AND (used OR token <> ?)",
            account_, module, time, token);
        if (held.next()) conflict(Code::conflict, "the module " + std::string(module) + " is locked");
    }
    auto id = hex(randomBytes(16));
    database_.run("INSERT OR REPLACE INTO locks (account, module, id, token, expires) VALUES (?, ?, ?, ?, ?)",
                  account_, module, id, token, time + lifetime);
    return id;
}

void BackupLocks::renew(std::string_view id) {
    moduleOf(id);
    database_.run("UPDATE locks SET used = 1, expires = ? WHERE id = ?", now() + lifetime, id);
}

void BackupLocks::release(std::string_view id) {
    {
        auto held = database_.query("SELECT 1 FROM locks WHERE account = ? AND id = ?", account_, id);
        if (!held.next()) forbidden("there is no lock of this id");
    }
    database_.run("DELETE FROM locks WHERE id = ?", id);
}

void BackupLocks::require(std::string_view id, std::string_view module) {
    if (moduleOf(id) != module) forbidden("the lock is not the one of the module " + std::string(module));
    database_.run("UPDATE locks SET used = 1 WHERE id = ? AND used = 0", id);
}

std::string BackupLocks::moduleOf(std::string_view id) {
    auto held =
        database_.query("SELECT module, expires FROM locks WHERE account = ? AND id = ?", account_, id);
    if (!held.next()) forbidden("there is no lock of this id");
    if (held.integer(1) <= now()) forbidden("the lock has expired");
    return held.text(0);
}

void BackupLocks::expireAll(Database& database) {
    Transaction transaction(database);
    database.run("UPDATE locks SET expires = 0");
    transaction.commit();
}

}  // namespace quillboxd
