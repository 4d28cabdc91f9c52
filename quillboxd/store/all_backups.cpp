#include "quillboxd/store/all_backups.h"

#include "quillboxd/store/database.h"
#include "quillboxd/store/time_text.h"

namespace quillboxd {

std::vector<SomebodysRecord> AllBackups::records(std::int64_t before, std::int64_t count) {
    auto rows = database_.query(
        "SELECT records.id, records.account, accounts.name, devices.name, "
        "(SELECT count(*) FROM record_files JOIN nodes ON nodes.id = node WHERE record = records.id AND live "
        "= 1) "
        "FROM records JOIN accounts ON accounts.id = records.account "
        "LEFT JOIN devices ON devices.id = device AND devices.account = records.account "
        "WHERE records.id < ? ORDER BY records.id DESC LIMIT ?",
        before, count);
    std::vector<SomebodysRecord> records;
    while (rows.next()) {
        auto record = BackupRecords(database_, rows.integer(1)).find(rows.integer(0));
        records.push_back(
            {*std::move(record), rows.integer(1), rows.text(2), rows.optionalText(3), rows.integer(4)});
    }
    return records;
}

std::vector<SomebodysLock> AllBackups::locksInForce(std::int64_t time) {
    auto rows = database_.query(
        "SELECT account, accounts.name, module, locks.id, used, expires FROM locks "
        "JOIN accounts ON accounts.id = account WHERE expires > ? ORDER BY account, module",
        time);
    std::vector<SomebodysLock> locks;
    while (rows.next()) {
        const std::chrono::system_clock::time_point until{std::chrono::seconds(rows.integer(5))};
        locks.push_back(
            {rows.integer(0), rows.text(1), rows.text(2), rows.text(3), rows.boolean(4), timeText(until)});
    }
    return locks;
}

}  // namespace quillboxd
