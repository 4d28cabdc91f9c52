#pragma once

namespace quillboxd {

class Database;

/// The version of the tables that this program works with; each version is the one before and a step more.
int schemaVersion();

/// Makes the tables, or brings those of an earlier version up to `version`; throws where they are of a later
/// one.
void prepareSchema(Database& database, int version = schemaVersion());

/// Takes everything out of all tables, and has the organisation as it was at first.
void emptyTables(Database& database);

}  // namespace quillboxd
