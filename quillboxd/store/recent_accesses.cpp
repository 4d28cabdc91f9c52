#include "quillboxd/store/recent_accesses.h"

#include <chrono>

#include "quillboxd/store/database.h"

namespace quillboxd {

void RecentAccesses::note(std::int64_t node, AccessKind kind) {
    using namespace std::chrono;
    const std::int64_t now = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
    const int number = static_cast<int>(kind);
    // Looking at one file again and again costs no writing: a second is as fine as the order needs to be.
    database_.run(
        "INSERT INTO accesses (account, node, kind, millis) VALUES (?1, ?2, ?3, ?4) ON CONFLICT DO UPDATE "
        "SET kind = ?3, millis = ?4 WHERE kind <> ?3 OR millis < ?4 - 1000",
        account_, node, number, now);
}

std::vector<Access> RecentAccesses::latest() {
    auto rows = database_.query(
        "SELECT node, kind, millis FROM accesses WHERE account = ? ORDER BY millis DESC, node LIMIT ?",
        account_, longestList);
    std::vector<Access> accesses;
    while (rows.next())
        accesses.push_back({rows.integer(0), static_cast<AccessKind>(rows.integer(1)), rows.integer(2)});
    return accesses;
}

}  // namespace quillboxd
