#include "quillboxd/store/schema.h"

#include <iterator>
#include <stdexcept>
#include <string>

#include "quillboxd/store/database.h"

namespace quillboxd {
namespace {

// A row of nodes is a folder, a file, or (live = 0) a file whose parts are still on their way; the view shows
// what people see. A parent of 0 is the account's root folder, which has no row.
constexpr const char* files = R"sql(
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

// A device is a number; it has a row where it was bound. Numbers that were given out are not given out again.
constexpr const char* backups = R"sql(
CREATE TABLE devices (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    machine_code TEXT NOT NULL,
    name TEXT,
    os TEXT,
    created_time TEXT NOT NULL,
    UNIQUE (account, machine_code));

CREATE TABLE scopes (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    device INTEGER NOT NULL,
    module TEXT NOT NULL,
    local_path TEXT NOT NULL,
    target_path TEXT NOT NULL,
    created_time TEXT NOT NULL,
    UNIQUE (account, device, module, local_path));

CREATE TABLE configuration (
    account INTEGER NOT NULL REFERENCES accounts,
    device INTEGER NOT NULL,
    module TEXT NOT NULL,
    name TEXT NOT NULL,
    value TEXT NOT NULL,
    PRIMARY KEY (account, device, module, name)) WITHOUT ROWID;

CREATE TABLE locks (
    account INTEGER NOT NULL REFERENCES accounts,
    module TEXT NOT NULL,
    id TEXT NOT NULL UNIQUE,
    token TEXT NOT NULL,
    used INTEGER NOT NULL DEFAULT 0,
    expires INTEGER NOT NULL,
    PRIMARY KEY (account, module)) WITHOUT ROWID;

CREATE TABLE records (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    device INTEGER NOT NULL,
    module TEXT NOT NULL,
    status INTEGER NOT NULL DEFAULT 0,
    version INTEGER NOT NULL DEFAULT 1,
    properties TEXT,
    created_time TEXT NOT NULL,
    end_time TEXT);
CREATE INDEX record_order ON records (account, module, device, id);

CREATE TABLE record_files (
    record INTEGER NOT NULL REFERENCES records ON DELETE CASCADE,
    node INTEGER NOT NULL REFERENCES nodes ON DELETE CASCADE,
    PRIMARY KEY (record, node)) WITHOUT ROWID;
)sql";

// The departments are those of a small bookmaker, below each other; nothing changes them.
constexpr const char* organisation = R"sql(
CREATE TABLE departments (
    id INTEGER PRIMARY KEY,
    parent INTEGER REFERENCES departments,
    name TEXT NOT NULL);
INSERT INTO departments (id, parent, name) VALUES
    (1, NULL, 'Quill & Daughters'), (2, 1, 'Letters'), (3, 1, 'Press'), (4, 3, 'Bindery');

ALTER TABLE accounts ADD COLUMN name TEXT NOT NULL DEFAULT '';
ALTER TABLE accounts ADD COLUMN department INTEGER NOT NULL DEFAULT 1;
ALTER TABLE accounts ADD COLUMN mobile TEXT NOT NULL DEFAULT '';
ALTER TABLE accounts ADD COLUMN role INTEGER NOT NULL DEFAULT 0;
ALTER TABLE accounts ADD COLUMN status INTEGER NOT NULL DEFAULT 0;
ALTER TABLE accounts ADD COLUMN removed INTEGER NOT NULL DEFAULT 0;
ALTER TABLE accounts ADD COLUMN created_time TEXT NOT NULL DEFAULT '';
UPDATE accounts SET name = auth_code, created_time = strftime('%Y-%m-%dT%H:%M:%fZ', 'now');
)sql";

/// Whoever signs in with one of these codes finds themselves in the organisation.
constexpr const char* staff = R"sql(
INSERT INTO accounts (id, auth_code, container, name, department, mobile, role, created_time)
SELECT column1, column2, column1 + 100, column3, column4, column5, column6,
    strftime('%Y-%m-%dT%H:%M:%fZ', 'now')
FROM (VALUES
    (101, 'anna', 'Anna Arden', 1, '+44 20 7946 0101', 1),
    (102, 'ben', 'Ben Bloom', 2, '+44 20 7946 0102', 0),
    (103, 'clara', 'Clara Cole', 2, '+44 20 7946 0103', 0),
    (104, 'dora', 'Dora Dunn', 3, '+44 20 7946 0104', 0),
    (105, 'emil', 'Emil East', 4, '+44 20 7946 0105', 0),
    (106, 'freya', 'Freya Ford', 4, '+44 20 7946 0106', 0))
WHERE true
ON CONFLICT (auth_code) DO UPDATE SET name = excluded.name, department = excluded.department,
    mobile = excluded.mobile, role = excluded.role;
)sql";

// Whatever gives a live file a content makes a revision of it, and the revisions are what an account's space
// is used for. Triggers see to both, so that no way to store or to take away a file can forget it.
constexpr const char* space = R"sql(
ALTER TABLE accounts ADD COLUMN space_used INTEGER NOT NULL DEFAULT 0;
ALTER TABLE uploads ADD COLUMN reserved_until INTEGER NOT NULL DEFAULT 0;

CREATE TABLE revisions (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    node INTEGER NOT NULL REFERENCES nodes ON DELETE CASCADE,
    number INTEGER NOT NULL,
    content INTEGER NOT NULL REFERENCES contents,
    size INTEGER NOT NULL,
    created_time TEXT NOT NULL,
    UNIQUE (node, number));

CREATE TRIGGER revision_added AFTER INSERT ON revisions BEGIN
    UPDATE accounts SET space_used = space_used + NEW.size WHERE id = NEW.account;
END;
CREATE TRIGGER revision_gone AFTER DELETE ON revisions BEGIN
    UPDATE accounts SET space_used = space_used - OLD.size WHERE id = OLD.account;
END;

CREATE VIEW newest_contents AS
    SELECT nodes.account, nodes.id,
        1 + (SELECT coalesce(max(number), 0) FROM revisions WHERE node = nodes.id) AS number,
        content, length, edited_time
    FROM nodes JOIN contents ON contents.id = content WHERE live = 1;
INSERT INTO revisions (account, node, number, content, size, created_time) SELECT * FROM newest_contents;

CREATE TRIGGER file_added AFTER INSERT ON nodes WHEN NEW.content IS NOT NULL BEGIN
    INSERT INTO revisions (account, node, number, content, size, created_time)
    SELECT * FROM newest_contents WHERE id = NEW.id;
END;
CREATE TRIGGER file_changed AFTER UPDATE OF content ON nodes WHEN NEW.content IS NOT OLD.content BEGIN
    INSERT INTO revisions (account, node, number, content, size, created_time)
    SELECT * FROM newest_contents WHERE id = NEW.id;
END;
)sql";

constexpr const char* keptRevisions = "ALTER TABLE revisions ADD COLUMN kept INTEGER NOT NULL DEFAULT 0;";
constexpr const char* favourites = "ALTER TABLE nodes ADD COLUMN starred_time TEXT;";

// The steps of an item are what it still takes to do; they go when it has ended.
constexpr const char* jobs = R"sql(
CREATE TABLE jobs (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    kind INTEGER NOT NULL,
    name_rule INTEGER NOT NULL,
    status INTEGER NOT NULL DEFAULT 0,
    destination INTEGER,
    wanted TEXT NOT NULL,
    password TEXT NOT NULL,
    created_time TEXT NOT NULL,
    begin_time TEXT,
    end_time TEXT);
CREATE INDEX open_jobs ON jobs (id) WHERE status < 2;

CREATE TABLE job_items (
    job INTEGER NOT NULL REFERENCES jobs,
    number INTEGER NOT NULL,
    node INTEGER NOT NULL,
    path TEXT NOT NULL,
    status INTEGER NOT NULL DEFAULT 0,
    total INTEGER NOT NULL DEFAULT 0,
    done INTEGER NOT NULL DEFAULT 0,
    new_node INTEGER,
    new_path TEXT NOT NULL DEFAULT '',
    code INTEGER NOT NULL DEFAULT 0,
    reason TEXT NOT NULL DEFAULT '',
    content INTEGER REFERENCES contents,
    PRIMARY KEY (job, number)) WITHOUT ROWID;

CREATE TABLE job_steps (
    job INTEGER NOT NULL REFERENCES jobs,
    item INTEGER NOT NULL,
    number INTEGER NOT NULL,
    node INTEGER NOT NULL,
    parent INTEGER NOT NULL,
    copy INTEGER,
    PRIMARY KEY (job, item, number)) WITHOUT ROWID;
CREATE INDEX job_step_nodes ON job_steps (job, item, node);

CREATE TABLE job_entries (
    job INTEGER NOT NULL REFERENCES jobs,
    item INTEGER NOT NULL,
    number INTEGER NOT NULL,
    name TEXT NOT NULL,
    is_file INTEGER NOT NULL,
    size INTEGER NOT NULL,
    millis INTEGER NOT NULL,
    node INTEGER,
    code INTEGER NOT NULL DEFAULT 0,
    reason TEXT NOT NULL DEFAULT '',
    PRIMARY KEY (job, item, number)) WITHOUT ROWID;

CREATE VIEW used_contents AS
    SELECT content FROM nodes WHERE content IS NOT NULL
    UNION SELECT content FROM revisions
    UNION SELECT content FROM job_items WHERE content IS NOT NULL;
)sql";

// A link is titled after what is left in it, in the order of the request. An empty time of its end is never.
constexpr const char* shares = R"sql(
CREATE TABLE shares (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    short_url TEXT NOT NULL UNIQUE,
    scope INTEGER NOT NULL,
    preview INTEGER NOT NULL DEFAULT 0,
    edit INTEGER NOT NULL DEFAULT 0,
    download INTEGER NOT NULL DEFAULT 0,
    extract_code TEXT NOT NULL DEFAULT '',
    expire_time TEXT NOT NULL DEFAULT '',
    comment TEXT NOT NULL DEFAULT '',
    share_time TEXT NOT NULL,
    update_time TEXT NOT NULL DEFAULT '',
    views INTEGER NOT NULL DEFAULT 0,
    downloads INTEGER NOT NULL DEFAULT 0);
CREATE INDEX share_order ON shares (account, share_time, id);

CREATE TABLE share_files (
    id INTEGER PRIMARY KEY,
    share INTEGER NOT NULL REFERENCES shares ON DELETE CASCADE,
    node INTEGER NOT NULL REFERENCES nodes ON DELETE CASCADE,
    UNIQUE (share, node));
CREATE INDEX shared_nodes ON share_files (node);

CREATE TABLE share_audience (
    id INTEGER PRIMARY KEY,
    share INTEGER NOT NULL REFERENCES shares ON DELETE CASCADE,
    kind INTEGER NOT NULL,
    member TEXT NOT NULL,
    UNIQUE (share, kind, member));

CREATE VIEW left_in_shares AS
    SELECT share, share_files.id AS place, name
    FROM share_files JOIN items ON items.id = node WHERE recycled = 0;

CREATE VIEW titled_shares AS
    SELECT shares.*, coalesce(
        (SELECT name FROM left_in_shares WHERE share = shares.id ORDER BY place LIMIT 1) ||
        (SELECT CASE count(*) WHEN 1 THEN '' ELSE ' and ' || (count(*) - 1) || ' more' END
            FROM left_in_shares WHERE share = shares.id), '') AS title
    FROM shares;
)sql";

// A change is told with the item as it was then, since it may be another or gone by the time of the reading.
constexpr const char* syncFolders = R"sql(
CREATE TABLE sync_folders (
    account INTEGER NOT NULL REFERENCES accounts,
    node INTEGER NOT NULL,
    start INTEGER NOT NULL,
    PRIMARY KEY (account, node)) WITHOUT ROWID;

CREATE TABLE sync_changes (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    folder INTEGER NOT NULL,
    kind INTEGER NOT NULL,
    move_type INTEGER,
    source_parent INTEGER,
    id_path TEXT NOT NULL,
    node INTEGER NOT NULL,
    parent INTEGER NOT NULL,
    name TEXT NOT NULL,
    is_file INTEGER NOT NULL,
    hidden INTEGER NOT NULL,
    file_type TEXT NOT NULL,
    mime_type TEXT NOT NULL,
    created_time TEXT NOT NULL,
    edited_time TEXT NOT NULL,
    sha256 TEXT NOT NULL,
    size INTEGER NOT NULL);
CREATE INDEX sync_feeds ON sync_changes (account, folder, id);
)sql";

constexpr const char* orders = R"sql(
CREATE TABLE orders (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    package TEXT NOT NULL,
    activate_time TEXT NOT NULL,
    end_time TEXT NOT NULL,
    warned INTEGER NOT NULL DEFAULT 0);
CREATE INDEX orders_of_accounts ON orders (account, id);

CREATE TABLE package_operations (
    account INTEGER NOT NULL REFERENCES accounts,
    number TEXT NOT NULL,
    PRIMARY KEY (account, number)) WITHOUT ROWID;
)sql";

// What an album holds is what was put into it (included = 1) and what its scope covers, without what was
// taken out of that (included = 0).
constexpr const char* albums = R"sql(
CREATE TABLE share_folders (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    node INTEGER NOT NULL REFERENCES nodes ON DELETE CASCADE,
    album_root INTEGER REFERENCES nodes ON DELETE SET NULL,
    created_time TEXT NOT NULL);

CREATE TABLE share_folder_members (
    folder INTEGER NOT NULL REFERENCES share_folders ON DELETE CASCADE,
    account INTEGER NOT NULL REFERENCES accounts,
    PRIMARY KEY (folder, account)) WITHOUT ROWID;
CREATE INDEX joined_share_folders ON share_folder_members (account, folder);

CREATE VIEW named_share_folders AS
    SELECT share_folders.id, share_folders.account AS owner, accounts.name AS owner_name, container, node,
        album_root, items.name, share_folders.created_time,
        (SELECT count(*) FROM share_folder_members WHERE folder = share_folders.id) AS members
    FROM share_folders JOIN items ON items.id = node JOIN accounts ON accounts.id = share_folders.account;

CREATE TABLE albums (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account INTEGER NOT NULL REFERENCES accounts,
    share_folder INTEGER REFERENCES share_folders ON DELETE CASCADE,
    node INTEGER REFERENCES nodes ON DELETE SET NULL,
    name TEXT NOT NULL,
    type INTEGER NOT NULL,
    kind INTEGER NOT NULL,
    scope_kind INTEGER NOT NULL,
    scope_parent INTEGER REFERENCES nodes ON DELETE SET NULL,
    cover TEXT NOT NULL DEFAULT '',
    created_time TEXT NOT NULL,
    updated_time TEXT NOT NULL);
CREATE INDEX album_order ON albums (account, id);

CREATE TABLE album_scopes (
    album INTEGER NOT NULL REFERENCES albums ON DELETE CASCADE,
    node INTEGER NOT NULL REFERENCES nodes ON DELETE CASCADE,
    PRIMARY KEY (album, node)) WITHOUT ROWID;

CREATE TABLE album_files (
    album INTEGER NOT NULL REFERENCES albums ON DELETE CASCADE,
    node INTEGER NOT NULL REFERENCES nodes ON DELETE CASCADE,
    included INTEGER NOT NULL,
    PRIMARY KEY (album, node)) WITHOUT ROWID;
CREATE INDEX nodes_in_albums ON album_files (node);
)sql";

// Whoever reads or removes a row waits for nobody else's: it scans no table, nor does a foreign key.
constexpr const char* indexes = R"sql(
CREATE INDEX nodes_in_folders ON nodes (parent);
CREATE INDEX nodes_of_contents ON nodes (content);
CREATE INDEX revisions_of_contents ON revisions (content);
CREATE INDEX job_items_of_contents ON job_items (content) WHERE content IS NOT NULL;
CREATE INDEX jobs_of_accounts ON jobs (account, id);
CREATE INDEX records_of_nodes ON record_files (node);
CREATE INDEX share_folders_of_nodes ON share_folders (node);
CREATE INDEX share_folders_of_album_roots ON share_folders (album_root);
CREATE INDEX albums_of_nodes ON albums (node);
CREATE INDEX albums_of_scope_parents ON albums (scope_parent);
CREATE INDEX albums_of_share_folders ON albums (share_folder);
CREATE INDEX album_scopes_of_nodes ON album_scopes (node);
)sql";

constexpr const char* starredChanges = "ALTER TABLE sync_changes ADD COLUMN starred_time TEXT;";

/// A data folder of version n has the first n of these.
constexpr const char* steps[] = {files, backups, organisation, staff,  space,  favourites, keptRevisions,
                                 jobs,  shares,  syncFolders,  orders, albums, indexes,    starredChanges};

int storedVersion(Database& database) {
    auto query = database.query("PRAGMA user_version");
    return query.next() ? static_cast<int>(query.integer(0)) : 0;
}

}  // namespace

int schemaVersion() {
    return static_cast<int>(std::size(steps));
}

void prepareSchema(Database& database, int version) {
    Transaction transaction(database);
    const int found = storedVersion(database);
    if (found < 0 || found > version)
        throw std::runtime_error("the data folder was made by another version of this program");
    for (int step = found; step < version; ++step) database.script(steps[step]);
    database.script(("PRAGMA user_version = " + std::to_string(version)).c_str());
    transaction.commit();
}

void emptyTables(Database& database) {
    for (const char* table :
         {"albums",  "share_folders", "package_operations", "orders",    "sync_changes", "sync_folders",
          "shares",  "job_entries",   "job_steps",          "job_items", "jobs",         "record_files",
          "records", "locks",         "configuration",      "scopes",    "devices",      "accesses",
          "parts",   "uploads",       "revisions",          "nodes",     "segments",     "contents",
          "tokens",  "accounts"}) {
        database.script((std::string("DELETE FROM ") + table).c_str());
    }
    database.script(staff);
}

}  // namespace quillboxd
