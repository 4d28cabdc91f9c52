#pragma once

namespace quillboxd {

class Database;

/// Makes the tables where the database is new; throws where another version has made them.
void prepareSchema(Database& database);

/// Takes everything out of all tables.
void emptyTables(Database& database);

}  // namespace quillboxd
