#include "quillboxd/store/sync_folders.h"

#include <algorithm>

#include "quillboxd/store/database.h"

namespace quillboxd {
namespace {

std::optional<int> numberOf(const std::optional<MoveType>& type) {
    return type ? std::optional(static_cast<int>(*type)) : std::nullopt;
}

Change readChange(const Query& row) {
    Change change;
    change.id = row.integer(0);
    change.kind = static_cast<ChangeKind>(row.integer(1));
    if (!row.isNull(2)) change.moveType = static_cast<MoveType>(row.integer(2));
    change.sourceParent = row.optionalInteger(3);
    change.idPath = row.text(4);
    auto& node = change.node;
    node.id = row.integer(5);
    node.parent = row.integer(6);
    node.name = row.text(7);
    node.isFile = row.boolean(8);
    node.hidden = row.boolean(9);
    node.fileType = row.text(10);
    node.mimeType = row.text(11);
    node.createdTime = row.text(12);
    node.editedTime = row.text(13);
    node.sha256 = row.text(14);
    node.size = row.integer(15);
    node.starredTime = row.optionalText(16);
    return change;
}

bool contains(const std::vector<std::int64_t>& folders, std::int64_t folder) {
    return std::find(folders.begin(), folders.end(), folder) != folders.end();
}

}  // namespace

void SyncFolders::open(std::int64_t folder) {
    if (start(folder)) return;
    // It takes a number itself, so that a cursor from before an earlier close lies behind the new start.
    add(folder, {});
    const auto start = newest();
    database_.run("INSERT INTO sync_folders (account, node, start) VALUES (?, ?, ?)", account_, folder,
                  start);
}

bool SyncFolders::close(std::int64_t folder) {
    if (!start(folder)) return false;
    database_.run("DELETE FROM sync_changes WHERE account = ? AND folder = ?", account_, folder);
    database_.run("DELETE FROM sync_folders WHERE account = ? AND node = ?", account_, folder);
    return true;
}

std::optional<std::int64_t> SyncFolders::start(std::int64_t folder) {
    auto row =
        database_.query("SELECT start FROM sync_folders WHERE account = ? AND node = ?", account_, folder);
    return row.next() ? std::optional(row.integer(0)) : std::nullopt;
}

std::int64_t SyncFolders::newest() {
    auto row = database_.query("SELECT seq FROM sqlite_sequence WHERE name = 'sync_changes'");
    return row.next() ? row.integer(0) : 0;
}

ChangePage SyncFolders::changes(std::int64_t folder, std::int64_t cursor, std::int64_t size) {
    const auto oneMore = size + 1;
    auto rows = database_.query(
        "SELECT id, kind, move_type, source_parent, id_path, node, parent, name, is_file, hidden, file_type, "
        "mime_type, created_time, edited_time, sha256, size, starred_time FROM sync_changes "
        "WHERE account = ? AND folder = ? AND id > ? ORDER BY id LIMIT ?",
        account_, folder, cursor, oneMore);
    ChangePage page;
    while (rows.next()) {
        page.hasMore = static_cast<std::int64_t>(page.changes.size()) == size;
        if (page.hasMore) break;
        page.changes.push_back(readChange(rows));
    }
    return page;
}

void SyncFolders::note(ChangeKind kind, std::int64_t id) {
    if (!areAny()) return;
    if (kind == ChangeKind::removed) close(id);
    Tree tree(database_, account_);
    const auto node = tree.find(id).value();
    const Change change{.kind = kind, .idPath = idPath(tree.path(node)), .node = node};
    for (const auto folder : foldersAbove(node)) add(folder, change);
}

void SyncFolders::noteMove(const Node& before, const Node& after) {
    if (!areAny()) return;
    const auto left = foldersAbove(before);
    const auto reached = foldersAbove(after);
    Change change{.kind = ChangeKind::moved,
                  .sourceParent = before.parent,
                  .idPath = idPath(Tree(database_, account_).path(after)),
                  .node = after};
    for (const auto folder : reached) {
        change.moveType = contains(left, folder) ? MoveType::within : MoveType::into;
        add(folder, change);
    }
    change.moveType = MoveType::outOf;
    for (const auto folder : left)
        if (!contains(reached, folder)) add(folder, change);
}

bool SyncFolders::areAny() {
    return database_.query("SELECT 1 FROM sync_folders WHERE account = ?", account_).next();
}

std::vector<std::int64_t> SyncFolders::foldersAbove(const Node& node) {
    std::vector<std::int64_t> open;
    if (start(0)) open.push_back(0);
    for (const auto& step : Tree(database_, account_).path(node))
        if (step.id != node.id && start(step.id)) open.push_back(step.id);
    return open;
}

void SyncFolders::add(std::int64_t folder, const Change& change) {
    const auto& node = change.node;
    database_.run(
        "INSERT INTO sync_changes (account, folder, kind, move_type, source_parent, id_path, node, parent, "
        "name, is_file, hidden, file_type, mime_type, created_time, edited_time, sha256, size, starred_time) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        account_, folder, static_cast<int>(change.kind), numberOf(change.moveType), change.sourceParent,
        change.idPath, node.id, node.parent, node.name, node.isFile, node.hidden, node.fileType,
        node.mimeType, node.createdTime, node.editedTime, node.sha256, node.size, node.starredTime);
}

}  // namespace quillboxd
