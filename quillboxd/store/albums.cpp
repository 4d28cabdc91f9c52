#include "quillboxd/store/albums.h"

#include "quillboxd/store/database.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

const std::string selectAlbums =
    "SELECT id, account, share_folder, node, name, type, kind, scope_kind, scope_parent, cover, "
    "created_time, updated_time FROM albums ";

const std::string visible =
    "WHERE (share_folder IS NULL AND account = ?1 OR share_folder IN (SELECT folder FROM "
    "share_folder_members WHERE account = ?1)) ";

const std::string filtered =
    visible +
    "AND instr(fold_case(name), ?2) > 0 AND (?3 IS NULL OR account = ?3) AND (?4 IS NULL OR share_folder = "
    "?4) AND (?5 = 0 OR type = ?5) AND (?6 = 0 OR kind = ?6) ";

// A condition over items, for the album ?2.
const std::string held =
    "id IN (SELECT node FROM album_files WHERE album = ?2 AND included = 1) OR is_file = 1 AND hidden = 0 "
    "AND id NOT IN (SELECT node FROM album_files WHERE album = ?2) AND parent IN (WITH RECURSIVE "
    "covered (id, deep) AS (SELECT album_scopes.node, scope_kind = 1 FROM album_scopes JOIN albums ON "
    "albums.id = album WHERE album = ?2 UNION SELECT nodes.id, 1 FROM nodes JOIN covered ON deep AND "
    "parent = covered.id WHERE live = 1 AND is_file = 0) SELECT id FROM covered)";

Album readAlbum(const Query& row) {
    Album album;
    album.id = row.integer(0);
    album.account = row.integer(1);
    album.shareFolder = row.optionalInteger(2);
    album.node = row.optionalInteger(3);
    album.name = row.text(4);
    album.type = row.integer(5);
    album.kind = row.integer(6);
    album.scopeKind = static_cast<ScopeKind>(row.integer(7));
    album.scopeParent = row.optionalInteger(8);
    album.cover = row.text(9);
    album.createdTime = row.text(10);
    album.updatedTime = row.text(11);
    return album;
}

}  // namespace

Album Albums::add(const Album& album) {
    const auto now = timestamp();
    auto row = database_.query(
        "INSERT INTO albums (account, share_folder, node, name, type, kind, scope_kind, scope_parent, "
        "created_time, updated_time) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?9) RETURNING id, account, "
        "share_folder, node, name, type, kind, scope_kind, scope_parent, cover, created_time, updated_time",
        account_, album.shareFolder, album.node, album.name, album.type, album.kind,
        static_cast<int>(album.scopeKind), album.scopeParent, now);
    row.next();
    return readAlbum(row);
}

void Albums::change(const Album& album) {
    const auto now = timestamp();
    database_.run(
        "UPDATE albums SET name = ?, scope_kind = ?, scope_parent = ?, cover = ?, updated_time = ? "
        "WHERE id = ?",
        album.name, static_cast<int>(album.scopeKind), album.scopeParent, album.cover, now, album.id);
}

void Albums::remove(std::int64_t id) {
    database_.run("DELETE FROM albums WHERE id = ?", id);
}

std::optional<Album> Albums::find(std::int64_t id) {
    auto row = database_.query(selectAlbums + visible + "AND id = ?2", account_, id);
    return row.next() ? std::optional(readAlbum(row)) : std::nullopt;
}

bool Albums::nameTaken(const Album& album) {
    auto row = database_.query(
        "SELECT 1 FROM albums WHERE name = ?1 AND share_folder IS ?2 AND (?2 IS NOT NULL OR account = ?3) "
        "AND id <> ?4",
        album.name, album.shareFolder, account_, album.id);
    return row.next();
}

std::vector<Album> Albums::list(const AlbumFilter& filter, std::int64_t offset, std::int64_t limit) {
    const auto keyWord = foldCase(filter.keyWord);
    auto rows =
        database_.query(selectAlbums + filtered + "ORDER BY id DESC LIMIT ?7 OFFSET ?8", account_, keyWord,
                        filter.creator, filter.shareFolder, filter.type, filter.kind, limit, offset);
    std::vector<Album> albums;
    while (rows.next()) albums.push_back(readAlbum(rows));
    return albums;
}

std::int64_t Albums::count(const AlbumFilter& filter) {
    const auto keyWord = foldCase(filter.keyWord);
    auto count = database_.query("SELECT count(*) FROM albums " + filtered, account_, keyWord, filter.creator,
                                 filter.shareFolder, filter.type, filter.kind);
    count.next();
    return count.integer(0);
}

void Albums::setScope(std::int64_t id, const std::vector<std::int64_t>& folders) {
    database_.run("DELETE FROM album_scopes WHERE album = ?", id);
    for (const auto folder : folders)
        database_.run("INSERT OR IGNORE INTO album_scopes (album, node) VALUES (?, ?)", id, folder);
}

std::vector<std::int64_t> Albums::scope(std::int64_t id) {
    auto rows = database_.query("SELECT node FROM album_scopes WHERE album = ?", id);
    std::vector<std::int64_t> folders;
    while (rows.next()) folders.push_back(rows.integer(0));
    return folders;
}

Page Albums::contents(std::int64_t id, const PageRequest& page) {
    return pickNodes(database_, held, id, "", page);
}

std::int64_t Albums::countContents(std::int64_t id) {
    return countNodes(database_, held, id);
}

void Albums::include(std::int64_t id, std::int64_t file) {
    note(id, file, true);
}

bool Albums::exclude(std::int64_t id, std::int64_t file) {
    if (!holds(id, file)) return false;
    database_.run("DELETE FROM album_files WHERE album = ? AND node = ?", id, file);
    if (holds(id, file)) note(id, file, false);  // its folder is in the scope
    return true;
}

bool Albums::holds(std::int64_t id, std::int64_t file) {
    return database_.query("SELECT 1 FROM items WHERE id = ?1 AND (" + held + ")", file, id).next();
}

void Albums::note(std::int64_t id, std::int64_t file, bool included) {
    database_.run("INSERT OR REPLACE INTO album_files (album, node, included) VALUES (?, ?, ?)", id, file,
                  included);
}

}  // namespace quillboxd
