#include "quillboxd/store/share_folders.h"

#include "quillboxd/error.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/time_text.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

const std::string selectFolders =
    "SELECT id, owner, owner_name, container, node, album_root, name, created_time, members "
    "FROM named_share_folders ";

const std::string filteredFolders =
    "WHERE id IN (SELECT folder FROM share_folder_members WHERE account = ?1) "
    "AND instr(fold_case(name), ?2) > 0 AND (?3 IS NULL OR (members < ?4) = (?3 = 0)) "
    "AND (?5 = 0 OR (owner = ?1) = (?5 = 1)) ";

ShareFolder readFolder(const Query& row) {
    ShareFolder folder;
    folder.id = row.integer(0);
    folder.owner = row.integer(1);
    folder.ownerName = row.text(2);
    folder.container = row.text(3);
    folder.node = row.integer(4);
    folder.albumRoot = row.optionalInteger(5);
    folder.name = row.text(6);
    folder.createdTime = row.text(7);
    folder.members = row.integer(8);
    return folder;
}

std::optional<int> numberOf(const std::optional<ShareFolderStatus>& status) {
    return status ? std::optional(static_cast<int>(*status)) : std::nullopt;
}

}  // namespace

ShareFolder ShareFolders::add(std::int64_t node, std::int64_t albumRoot) {
    const auto now = timestamp();
    std::int64_t id = 0;
    {
        auto row = database_.query(
            "INSERT INTO share_folders (account, node, album_root, created_time) VALUES (?, ?, ?, ?) "
            "RETURNING id",
            account_, node, albumRoot, now);
        row.next();
        id = row.integer(0);
    }
    join(id);
    return *find(id);
}

void ShareFolders::remove(std::int64_t id) {
    database_.run("DELETE FROM share_folders WHERE id = ?", id);
}

void ShareFolders::setAlbumRoot(std::int64_t id, std::int64_t node) {
    database_.run("UPDATE share_folders SET album_root = ? WHERE id = ?", node, id);
}

std::optional<ShareFolder> ShareFolders::find(std::int64_t id) {
    if (!hasMember(id)) return std::nullopt;
    auto row = database_.query(selectFolders + "WHERE id = ?", id);
    return row.next() ? std::optional(readFolder(row)) : std::nullopt;
}

bool ShareFolders::hasMember(std::int64_t id) {
    return database_
        .query("SELECT 1 FROM share_folder_members WHERE folder = ? AND account = ?", id, account_)
        .next();
}

std::vector<ShareFolder> ShareFolders::list(const ShareFolderFilter& filter, std::int64_t offset,
                                            std::int64_t limit) {
    const auto keyWord = foldCase(filter.keyWord);
    auto rows = database_.query(selectFolders + filteredFolders + "ORDER BY id DESC LIMIT ?6 OFFSET ?7",
                                account_, keyWord, numberOf(filter.status), ShareFolder::mostMembers,
                                static_cast<int>(filter.query), limit, offset);
    std::vector<ShareFolder> folders;
    while (rows.next()) folders.push_back(readFolder(rows));
    return folders;
}

std::int64_t ShareFolders::count(const ShareFolderFilter& filter) {
    const auto keyWord = foldCase(filter.keyWord);
    auto count =
        database_.query("SELECT count(*) FROM named_share_folders " + filteredFolders, account_, keyWord,
                        numberOf(filter.status), ShareFolder::mostMembers, static_cast<int>(filter.query));
    count.next();
    return count.integer(0);
}

void ShareFolders::join(std::int64_t id) {
    if (hasMember(id)) return;
    auto row = database_.query("SELECT members FROM named_share_folders WHERE id = ?", id);
    if (!row.next()) notFound("there is no share folder \"" + std::to_string(id) + "\"");
    if (row.integer(0) >= ShareFolder::mostMembers)
        conflict(Code::conflict,
                 "the share folder has its " + std::to_string(ShareFolder::mostMembers) + " members already");
    database_.run("INSERT INTO share_folder_members (folder, account) VALUES (?, ?)", id, account_);
}

}  // namespace quillboxd
