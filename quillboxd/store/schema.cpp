#include "quillboxd/store/schema.h"

#include <stdexcept>

#include "quillboxd/store/database.h"

namespace quillboxd {
namespace {

constexpr int version = 1;

// A row of nodes is a folder, a file, or (live = 0) a file whose parts are still on their way; the view shows
// what people see. A parent of 0 is the account's root folder, which has no row.
constexpr const char* tables = R"sql(
CREATE TABLE settings (key TEXT PRIMARY KEY, value BLOB NOT NULL) WITHOUT ROWID;

CREATE TABLE accounts (
    id INTEGER PRIMARY KEY,
    auth_code TEXT NOT NULL UNIQUE,
    container TEXT NOT NULL UNIQUE);

CREATE TABLE tokens (
    token TEXT PRIMARY KEY,
    account INTEGER NOT NULL REFERENCES accounts) WITHOUT ROWID;

CREATE TABLE contents (
    id INTEGER PRIMARY KEY,
    sha256 TEXT NOT NULL,
    length INTEGER NOT NULL,
    UNIQUE (sha256, length));

CREATE TABLE segments (
    content INTEGER NOT NULL REFERENCES contents,
    start INTEGER NOT NULL,
    size INTEGER NOT NULL,
    blob TEXT NOT NULL,
    PRIMARY KEY (content, start)) WITHOUT ROWID;

CREATE TABLE nodes (
    id INTEGER PRIMARY KEY,
    account INTEGER NOT NULL REFERENCES accounts,
    parent INTEGER NOT NULL,
    name TEXT NOT NULL,
    is_file INTEGER NOT NULL,
    live INTEGER NOT NULL,
    recycled INTEGER NOT NULL DEFAULT 0,
    hidden INTEGER NOT NULL DEFAULT 0,
    file_type TEXT NOT NULL,
    mime_type TEXT NOT NULL,
    description TEXT NOT NULL DEFAULT '',
    scene TEXT NOT NULL DEFAULT '',
    created_time TEXT NOT NULL,
    edited_time TEXT NOT NULL,
    content INTEGER REFERENCES contents);
CREATE UNIQUE INDEX node_names ON nodes (account, parent, name) WHERE live = 1 AND recycled = 0;
CREATE INDEX node_order ON nodes (account, parent, is_file, name, id) WHERE live = 1;

CREATE VIEW items AS
    SELECT nodes.*, coalesce(contents.sha256, '') AS sha256, coalesce(contents.length, 0) AS size
    FROM nodes LEFT JOIN contents ON contents.id = nodes.content
    WHERE live = 1;

CREATE TABLE uploads (
    node INTEGER PRIMARY KEY REFERENCES nodes,
    sha256 TEXT NOT NULL,
    length INTEGER NOT NULL,
    auto_rename INTEGER NOT NULL);

CREATE TABLE parts (
    node INTEGER NOT NULL REFERENCES uploads,
    number INTEGER NOT NULL,
    start INTEGER NOT NULL,
    size INTEGER NOT NULL,
    state_before BLOB,
    blob TEXT,
    state_after BLOB,
    digest_after BLOB,
    PRIMARY KEY (node, number)) WITHOUT ROWID;

CREATE TABLE accesses (
    account INTEGER NOT NULL REFERENCES accounts,
    node INTEGER NOT NULL,
    kind INTEGER NOT NULL,
    millis INTEGER NOT NULL,
    PRIMARY KEY (account, node)) WITHOUT ROWID;
)sql";

int storedVersion(Database& database) {
    auto query = database.query("PRAGMA user_version");
    return query.next() ? static_cast<int>(query.integer(0)) : 0;
}

}  // namespace

void prepareSchema(Database& database) {
    Transaction transaction(database);
    const int found = storedVersion(database);
    if (found == 0) {
        database.script(tables);
        database.script(("PRAGMA user_version = " + std::to_string(version)).c_str());
    } else if (found != version) {
        throw std::runtime_error("the data folder was made by another version of this program");
    }
    transaction.commit();
}

void emptyTables(Database& database) {
    for (const char* table :
         {"accesses", "parts", "uploads", "nodes", "segments", "contents", "tokens", "accounts"}) {
        database.script((std::string("DELETE FROM ") + table).c_str());
    }
}

}  // namespace quillboxd
