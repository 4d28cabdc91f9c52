// One lock holds everybody while a statement runs, so none may read through all rows of a table.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "quillboxd/store/albums.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/jobs.h"
#include "quillboxd/store/schema.h"
#include "quillboxd/store/tree.h"

namespace quillboxd_test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// Three rows in every table that refers to nodes, contents or accounts: each a file in a folder of its own.
constexpr const char* threeOfAll = R"sql(
CREATE TEMP TABLE numbers AS SELECT column1 AS n FROM (VALUES (1), (2), (3));
INSERT INTO accounts (id, auth_code, container) SELECT n, n, n FROM numbers;
INSERT INTO contents (id, sha256, length) SELECT n, n, 6 FROM numbers;
INSERT INTO contents (id, sha256, length) SELECT 10 + n, n, 7 FROM numbers;
INSERT INTO nodes (id, account, parent, name, is_file, live, file_type, mime_type, created_time, edited_time)
    SELECT 10 + n, n, 0, 'folder', 0, 1, '10', '', '', '' FROM numbers;
INSERT INTO nodes (id, account, parent, name, is_file, live, file_type, mime_type, created_time, edited_time,
    content) SELECT 20 + n, n, 10 + n, 'file', 1, 1, '45', '', '', '', n FROM numbers;
INSERT INTO accesses (account, node, kind, millis) SELECT n, 20 + n, 1, 0 FROM numbers;
INSERT INTO records (id, account, device, module, created_time) SELECT n, n, 0, '', '' FROM numbers;
INSERT INTO record_files (record, node) SELECT n, 20 + n FROM numbers;
INSERT INTO jobs (id, account, kind, name_rule, wanted, password, created_time)
    SELECT n, n, 1, 2, '[]', '', '' FROM numbers;
INSERT INTO job_items (job, number, node, path, content) SELECT n, 1, 20 + n, '', n FROM numbers;
INSERT INTO share_folders (id, account, node, album_root, created_time)
    SELECT n, n, 10 + n, 10 + n, '' FROM numbers;
INSERT INTO albums (id, account, share_folder, node, name, type, kind, scope_kind, scope_parent, created_time,
    updated_time) SELECT n, n, n, 10 + n, '', 1, 1, 1, 10 + n, '', '' FROM numbers;
INSERT INTO album_scopes (album, node) SELECT n, 10 + n FROM numbers;
INSERT INTO album_files (album, node, included) SELECT n, 20 + n, 1 FROM numbers;
)sql";

class ScansTest : public testing::Test {
  protected:
    ScansTest() {
        quillboxd::prepareSchema(database_);
        database_.script(threeOfAll);
    }

    /// The statements so far that have stepped from row to row of a whole table.
    static std::vector<std::string> scans() {
        std::vector<std::string> found;
        for (auto* each = next(nullptr); each; each = next(each)) {
            if (counted(each, SQLITE_STMTSTATUS_FULLSCAN_STEP) + counted(each, SQLITE_STMTSTATUS_AUTOINDEX))
                found.emplace_back(sqlite3_sql(each));
        }
        return found;
    }

  private:
    /// Opens a database in memory and remembers its connection.
    static std::string watched() {
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&notice));
        return ":memory:";
    }
    static int notice(sqlite3* opened, const char**, const void*) {
        connection_ = opened;
        return SQLITE_OK;
    }
    static sqlite3_stmt* next(sqlite3_stmt* statement) { return sqlite3_next_stmt(connection_, statement); }
    static int counted(sqlite3_stmt* statement, int what) { return sqlite3_stmt_status(statement, what, 0); }

    inline static sqlite3* connection_ = nullptr;

  protected:
    quillboxd::Database database_{watched()};
};

TEST_F(ScansTest, AScanIsSeen) {
    database_.run("DELETE FROM nodes WHERE name = 'none'");
    EXPECT_THAT(scans(), SizeIs(1));
}

TEST_F(ScansTest, AFileIsRemovedWithoutOne) {
    quillboxd::Tree(database_, 1).remove(21);
    EXPECT_THAT(scans(), IsEmpty());
}

TEST_F(ScansTest, AFolderIsRemovedWithoutOne) {
    quillboxd::Tree(database_, 1).remove(11);
    EXPECT_THAT(scans(), IsEmpty());
}

TEST_F(ScansTest, AContentIsRemovedWithoutOne) {
    database_.run("DELETE FROM contents WHERE id = 11");
    EXPECT_THAT(scans(), IsEmpty());
}

TEST_F(ScansTest, TheFolderOfALinkIsListedWithoutOne) {
    quillboxd::pickNodes(database_, "parent = ?2 AND hidden = 0", 11, "", {});
    EXPECT_THAT(scans(), IsEmpty());
}

TEST_F(ScansTest, AnAlbumIsListedWithoutOne) {
    EXPECT_THAT(quillboxd::Albums(database_, 1).contents(1, {}).nodes, SizeIs(1));
    EXPECT_THAT(scans(), IsEmpty());
}

TEST_F(ScansTest, TheJobsOfAnAccountAreListedWithoutOne) {
    EXPECT_THAT(quillboxd::Jobs(database_, 1).list({}), SizeIs(1));
    EXPECT_THAT(scans(), IsEmpty());
}

}  // namespace
}  // namespace quillboxd_test
