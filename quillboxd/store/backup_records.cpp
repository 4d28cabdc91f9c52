#include "quillboxd/store/backup_records.h"

#include "quillboxd/store/database.h"
#include "quillboxd/store/tree.h"

namespace quillboxd {
namespace {

const std::string columns = "id, device, module, status, version, properties, created_time, end_time ";

BackupRecord readRecord(const Query& row) {
    return {row.integer(0), row.integer(1),      row.text(2), static_cast<RecordStatus>(row.integer(3)),
            row.integer(4), row.optionalText(5), row.text(6), row.optionalText(7)};
}

}  // namespace

BackupRecord BackupRecords::add(std::int64_t device, std::string_view module,
                                const std::optional<std::string>& properties) {
    const auto time = timestamp();
    auto row = database_.query(
        "INSERT INTO records (account, device, module, properties, created_time) VALUES (?, ?, ?, ?, ?) "
        "RETURNING " +
            columns,
        account_, device, module, properties, time);
    row.next();
    return readRecord(row);
}

std::optional<BackupRecord> BackupRecords::find(std::int64_t id) {
    auto row =
        database_.query("SELECT " + columns + "FROM records WHERE account = ? AND id = ?", account_, id);
    return row.next() ? std::optional(readRecord(row)) : std::nullopt;
}

std::vector<BackupRecord> BackupRecords::list(const RecordPage& page) {
    auto rows = database_.query("SELECT " + columns +
                                    "FROM records WHERE account = ?1 AND (?2 = 0 OR device = ?2) "
                                    "AND (?3 = '' OR module = ?3) AND id < ?4 ORDER BY id DESC LIMIT ?5",
                                account_, page.device, page.module, page.before, page.size);
    std::vector<BackupRecord> records;
    while (rows.next()) records.push_back(readRecord(rows));
    return records;
}

void BackupRecords::finish(std::int64_t id, const std::optional<std::string>& properties) {
    const auto time = timestamp();
    database_.run(
        "UPDATE records SET status = ?, version = version + 1, properties = coalesce(?, properties), "
        "end_time = ? WHERE id = ?",
        static_cast<int>(RecordStatus::finished), properties, time, id);
}

void BackupRecords::remove(std::int64_t id) {
    database_.run("DELETE FROM records WHERE id = ?", id);
}

void BackupRecords::attach(std::int64_t record, std::int64_t node) {
    database_.run("INSERT OR IGNORE INTO record_files (record, node) VALUES (?, ?)", record, node);
}

std::vector<RecordFile> BackupRecords::files(std::int64_t record, std::int64_t count) {
    auto rows = database_.query(
        "SELECT id, name, sha256, size, description, created_time FROM record_files "
        "JOIN items ON items.id = node WHERE record = ? ORDER BY name, id LIMIT ?",
        record, count);
    std::vector<RecordFile> files;
    while (rows.next())
        files.push_back(
            {rows.integer(0), rows.text(1), rows.text(2), rows.integer(3), rows.text(4), rows.text(5)});
    return files;
}

}  // namespace quillboxd
