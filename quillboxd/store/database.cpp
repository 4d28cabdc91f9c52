#include "quillboxd/store/database.h"

#include <stdexcept>

#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

[[noreturn]] void fail(sqlite3* connection) {
    throw std::runtime_error(std::string("the database: ") + sqlite3_errmsg(connection));
}

void foldCaseOfArgument(sqlite3_context* context, int, sqlite3_value** values) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values[0]));
    const auto folded = foldCase(bytes ? std::string_view(bytes) : std::string_view());
    sqlite3_result_text(context, folded.data(), static_cast<int>(folded.size()), SQLITE_TRANSIENT);
}

}  // namespace

Query::~Query() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

bool Query::next() {
    const int result = sqlite3_step(statement_);
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE) fail(sqlite3_db_handle(statement_));
    return false;
}

std::string Query::text(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
    return bytes ? std::string(bytes, size) : std::string();
}

std::optional<std::string> Query::optionalText(int column) const {
    if (isNull(column)) return std::nullopt;
    return text(column);
}

std::optional<std::int64_t> Query::optionalInteger(int column) const {
    if (isNull(column)) return std::nullopt;
    return integer(column);
}

void Query::bind(int index, std::int64_t value) {
    sqlite3_bind_int64(statement_, index, value);
}

void Query::bind(int index, std::string_view value) {
    // A null pointer would bind NULL, and an empty view may hold one.
    const char* bytes = value.data() ? value.data() : "";
    sqlite3_bind_text64(statement_, index, bytes, value.size(), SQLITE_STATIC, SQLITE_UTF8);
}

void Query::bind(int index, Blob value) {
    sqlite3_bind_blob64(statement_, index, value.bytes.data(), value.bytes.size(), SQLITE_STATIC);
}

void Query::bind(int index, std::nullopt_t) {
    sqlite3_bind_null(statement_, index);
}

Database::Database(const std::string& path) {
    if (sqlite3_open(path.c_str(), &connection_) != SQLITE_OK) {
        const std::string why = sqlite3_errmsg(connection_);
        sqlite3_close(connection_);
        throw std::runtime_error("the database " + path + ": " + why);
    }
    try {
        // A commit that the system has taken survives the end of the process; only a power cut could undo it.
        script("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON;");
    } catch (...) {
        sqlite3_close(connection_);
        throw;
    }
    sqlite3_create_function(connection_, "fold_case", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                            foldCaseOfArgument, nullptr, nullptr);
}

Database::~Database() {
    for (const auto& [sql, statement] : statements_) sqlite3_finalize(statement);
    sqlite3_close(connection_);
}

void Database::script(const char* sql) {
    if (sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail(connection_);
}

sqlite3_stmt* Database::prepared(std::string_view sql) {
    auto& statement = statements_[std::string(sql)];
    if (!statement && sqlite3_prepare_v3(connection_, sql.data(), static_cast<int>(sql.size()),
                                         SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK) {
        fail(connection_);
    }
    return statement;
}

Transaction::Transaction(Database& database) : database_(database), lock_(database.mutex_) {
    database_.run("BEGIN");
}

Transaction::~Transaction() {
    if (open_) sqlite3_exec(database_.connection_, "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit() {
    database_.run("COMMIT");
    open_ = false;
}

Savepoint::~Savepoint() {
    const char* const end = kept_ ? "RELEASE part" : "ROLLBACK TO part; RELEASE part";
    sqlite3_exec(database_.connection_, end, nullptr, nullptr, nullptr);
}

}  // namespace quillboxd
