#include "quillboxd/store/backup_devices.h"

#include "quillboxd/store/database.h"
#include "quillboxd/store/tree.h"

namespace quillboxd {
namespace {

const char* const selectDevices = "SELECT id, machine_code, name, os, created_time FROM devices ";

Device readDevice(const Query& row) {
    return {row.integer(0), row.text(1), row.optionalText(2), row.optionalText(3), row.text(4)};
}

Scope readScope(const Query& row) {
    return {row.integer(0), row.text(1), row.text(2), row.text(3), row.text(4)};
}

}  // namespace

Device BackupDevices::bind(std::string_view machineCode, const std::optional<std::string>& name,
                           const std::optional<std::string>& os) {
    const auto time = timestamp();
    auto row = database_.query(
        "INSERT INTO devices (account, machine_code, name, os, created_time) VALUES (?1, ?2, ?3, ?4, ?5) "
        "ON CONFLICT DO UPDATE SET name = ?3, os = ?4 RETURNING id, machine_code, name, os, created_time",
        account_, machineCode, name, os, time);
    row.next();
    return readDevice(row);
}

bool BackupDevices::unbind(std::int64_t id) {
    if (!find(id)) return false;
    database_.run("DELETE FROM scopes WHERE account = ? AND device = ?", account_, id);
    database_.run("DELETE FROM configuration WHERE account = ? AND device = ?", account_, id);
    database_.run("DELETE FROM devices WHERE account = ? AND id = ?", account_, id);
    return true;
}

std::vector<Device> BackupDevices::devices() {
    auto rows = database_.query(std::string(selectDevices) + "WHERE account = ? ORDER BY id", account_);
    std::vector<Device> devices;
    while (rows.next()) devices.push_back(readDevice(rows));
    return devices;
}

std::optional<Device> BackupDevices::find(std::int64_t id) {
    auto row = database_.query(std::string(selectDevices) + "WHERE account = ? AND id = ?", account_, id);
    return row.next() ? std::optional(readDevice(row)) : std::nullopt;
}

std::optional<Scope> BackupDevices::addScope(std::int64_t device, const Scope& scope) {
    const auto time = timestamp();
    auto row = database_.query(
        "INSERT OR IGNORE INTO scopes (account, device, module, local_path, target_path, created_time) "
        "VALUES (?, ?, ?, ?, ?, ?) RETURNING id, module, local_path, target_path, created_time",
        account_, device, scope.module, scope.localPath, scope.targetPath, time);
    return row.next() ? std::optional(readScope(row)) : std::nullopt;
}

bool BackupDevices::removeScope(std::int64_t device, std::int64_t id) {
    auto row = database_.query("DELETE FROM scopes WHERE account = ? AND device = ? AND id = ? RETURNING id",
                               account_, device, id);
    return row.next();
}

std::vector<Scope> BackupDevices::scopes(std::int64_t device, std::string_view module) {
    auto rows = database_.query(
        "SELECT id, module, local_path, target_path, created_time FROM scopes "
        "WHERE account = ?1 AND device = ?2 AND (?3 = '' OR module = ?3) ORDER BY id",
        account_, device, module);
    std::vector<Scope> scopes;
    while (rows.next()) scopes.push_back(readScope(rows));
    return scopes;
}

void BackupDevices::setValue(std::int64_t device, const ConfigValue& value) {
    database_.run(
        "INSERT OR REPLACE INTO configuration (account, device, module, name, value) VALUES (?, ?, ?, ?, ?)",
        account_, device, value.module, value.name, value.value);
}

std::vector<ConfigValue> BackupDevices::values(std::int64_t device, std::string_view module,
                                               const std::optional<std::string>& name) {
    auto rows = database_.query(
        "SELECT module, name, value FROM configuration "
        "WHERE account = ?1 AND device = ?2 AND module = ?3 AND (?4 IS NULL OR name = ?4) ORDER BY name",
        account_, device, module, name);
    std::vector<ConfigValue> values;
    while (rows.next()) values.push_back({rows.text(0), rows.text(1), rows.text(2)});
    return values;
}

}  // namespace quillboxd
