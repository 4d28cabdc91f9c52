#include "quillboxd/store/revisions.h"

#include "quillboxd/store/database.h"

namespace quillboxd {
namespace {

const std::string selectRevisions =
    "SELECT revisions.id, node, number, content, sha256, size, created_time, kept FROM revisions "
    "JOIN contents ON contents.id = content ";

Revision readRevision(const Query& row) {
    return {row.integer(0), row.integer(1), row.integer(2), row.integer(3),
            row.text(4),    row.integer(5), row.text(6),    row.boolean(7)};
}

}  // namespace

std::vector<Revision> Revisions::list(std::int64_t node) {
    auto rows = database_.query(selectRevisions + "WHERE node = ? ORDER BY number DESC", node);
    std::vector<Revision> revisions;
    while (rows.next()) revisions.push_back(readRevision(rows));
    return revisions;
}

std::optional<Revision> Revisions::find(std::int64_t id) {
    auto row = database_.query(selectRevisions + "WHERE revisions.id = ?", id);
    return row.next() ? std::optional(readRevision(row)) : std::nullopt;
}

bool Revisions::hasHeld(std::int64_t node, std::int64_t content) {
    return database_.query("SELECT 1 FROM revisions WHERE node = ? AND content = ?", node, content).next();
}

void Revisions::keep(std::int64_t id, bool forEver) {
    database_.run("UPDATE revisions SET kept = ? WHERE id = ?", forEver, id);
}

void Revisions::prune(std::int64_t node) {
    database_.run(
        "DELETE FROM revisions WHERE node = ?1 AND kept = 0 AND number <= "
        "(SELECT max(number) FROM revisions WHERE node = ?1) - ?2",
        node, longestHistory);
}

}  // namespace quillboxd
