#include "baseapi/platform/sqlite_store.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace baseapi::inline v1 {
namespace {

/// How long another process may keep the file locked.
constexpr std::chrono::milliseconds kBusyPatience{10'000};

class SqliteError : public std::runtime_error {
  public:
    SqliteError(int code, const std::string& text) : std::runtime_error(text), code_(code & 0xff) {}

    bool busy() const { return code_ == SQLITE_BUSY; }
    /// The file holds no sound database.
    bool broken() const { return code_ == SQLITE_CORRUPT || code_ == SQLITE_NOTADB; }

  private:
    int code_;
};

[[noreturn]] void throwError(sqlite3* connection) {
    throw SqliteError(sqlite3_extended_errcode(connection), sqlite3_errmsg(connection));
}

void tell(const std::filesystem::path& file, const std::string& what) {
    std::fprintf(stderr, "baseapi: %s: %s\n", file.c_str(), what.c_str());
}

/// One use of a prepared statement, which is ready for the next one afterwards.
class Execution {
  public:
    explicit Execution(sqlite3_stmt* statement) : statement_(statement) {}
    ~Execution() {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
    }
    Execution(const Execution&) = delete;
    Execution& operator=(const Execution&) = delete;

    void bindText(int at, std::string_view text) {
        check(sqlite3_bind_text64(statement_, at, text.empty() ? "" : text.data(), text.size(), SQLITE_STATIC,
                                  SQLITE_UTF8));
    }
    void bindBytes(int at, std::string_view bytes) {
        check(sqlite3_bind_blob64(statement_, at, bytes.empty() ? "" : bytes.data(), bytes.size(),
                                  SQLITE_STATIC));
    }
    void bindInteger(int at, std::int64_t number) { check(sqlite3_bind_int64(statement_, at, number)); }

    bool step() {
        const int code = sqlite3_step(statement_);
        if (code != SQLITE_ROW && code != SQLITE_DONE) throwError(sqlite3_db_handle(statement_));
        return code == SQLITE_ROW;
    }
    std::int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
    std::string bytes(int column) const {
        const auto* data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
        return data ? std::string(data, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)))
                    : std::string();
    }

  private:
    void check(int code) {
        if (code != SQLITE_OK) throwError(sqlite3_db_handle(statement_));
    }

    sqlite3_stmt* statement_;
};

/// What the column "kind" says. The numbers stand in files: they never change.
enum class Kind { text = 0, integer = 1, boolean = 2, real = 3, json = 4, bytes = 5 };

struct ValueBinder {
    Execution& execution;

    void operator()(const std::string& text) {
        bindKind(Kind::text);
        execution.bindText(3, text);
    }
    void operator()(std::int64_t number) {
        bindKind(Kind::integer);
        execution.bindInteger(3, number);
    }
    void operator()(bool value) {
        bindKind(Kind::boolean);
        execution.bindInteger(3, value ? 1 : 0);
    }
    void operator()(double number) {
        bindKind(Kind::real);
        // By its bits: SQLite has no NaN and drops the sign of zero.
        execution.bindInteger(3, std::bit_cast<std::int64_t>(number));
    }
    void operator()(const KeyValueStore::Json& json) {
        bindKind(Kind::json);
        execution.bindText(3, json.text);
    }
    void operator()(const KeyValueStore::Bytes& bytes) {
        bindKind(Kind::bytes);
        execution.bindBytes(3, bytes.bytes);
    }
    void bindKind(Kind kind) { execution.bindInteger(2, static_cast<int>(kind)); }
};

std::optional<KeyValueStore::Value> readValue(const Execution& row) {
    switch (static_cast<Kind>(row.integer(0))) {
        case Kind::text:
            return row.bytes(1);
        case Kind::integer:
            return row.integer(1);
        case Kind::boolean:
            return row.integer(1) != 0;
        case Kind::real:
            return std::bit_cast<double>(row.integer(1));
        case Kind::json:
            return KeyValueStore::Json{row.bytes(1)};
        case Kind::bytes:
            return KeyValueStore::Bytes{row.bytes(1)};
    }
    return std::nullopt;
}

struct ConnectionDeleter {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
};
struct StatementDeleter {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementDeleter>;

void makeFileForOwner(const std::filesystem::path& file) {
    const auto folder = file.parent_path();
    if (!folder.empty() && !std::filesystem::exists(folder)) {
        std::filesystem::create_directories(folder.parent_path());
        ::mkdir(folder.c_str(), 0700);
    }
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0) throw std::system_error(errno, std::system_category());
    ::close(descriptor);
}

/// Holds off other processes that would put the same file aside.
class FileLock {
  public:
    explicit FileLock(const std::filesystem::path& file)
        : descriptor_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        while (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    ~FileLock() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

  private:
    int descriptor_;
};

std::filesystem::path withSuffix(const std::filesystem::path& file, const std::string& suffix) {
    return file.string() + suffix;
}

void renameBroken(const std::filesystem::path& file) {
    int number = 1;
    while (std::filesystem::exists(withSuffix(file, ".broken-" + std::to_string(number)))) ++number;
    const auto aside = withSuffix(file, ".broken-" + std::to_string(number));
    std::filesystem::rename(file, aside);
    for (const char* companion : {"-wal", "-shm"}) {
        std::error_code notThere;
        std::filesystem::rename(withSuffix(file, companion), withSuffix(aside, companion), notThere);
    }
    tell(file, "no sound database any more, kept as " + aside.filename().string());
}

}  // namespace

class SqliteStore::Database {
  public:
    explicit Database(const std::filesystem::path& file) {
        makeFileForOwner(file);
        sqlite3* connection = nullptr;
        const int code =
            sqlite3_open_v2(file.c_str(), &connection,
                            SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
        connection_.reset(connection);
        if (code != SQLITE_OK) throwError(connection);
        sqlite3_busy_timeout(connection, static_cast<int>(kBusyPatience.count()));
        setUp();
        select_ = prepare("SELECT kind, value FROM preferences WHERE key = ?1");
        upsert_ = prepare("INSERT OR REPLACE INTO preferences (key, kind, value) VALUES (?1, ?2, ?3)");
        delete_ = prepare("DELETE FROM preferences WHERE key = ?1");
        clear_ = prepare("DELETE FROM preferences");
    }

    std::optional<Value> get(std::string_view key) {
        Execution execution(select_.get());
        execution.bindText(1, key);
        return execution.step() ? readValue(execution) : std::nullopt;
    }
    void put(std::string_view key, const Value& value) {
        Execution execution(upsert_.get());
        execution.bindText(1, key);
        std::visit(ValueBinder{execution}, value);
        execution.step();
    }
    void remove(std::string_view key) {
        Execution execution(delete_.get());
        execution.bindText(1, key);
        execution.step();
    }
    void clear() { Execution(clear_.get()).step(); }
    void sync() { run("PRAGMA wal_checkpoint(FULL)"); }

    void check() {
        const auto statement = prepare("PRAGMA quick_check(1)");
        Execution execution(statement.get());
        if (!execution.step() || execution.bytes(0) != "ok") throw SqliteError(SQLITE_CORRUPT, "not sound");
    }

  private:
    /// SQLite does not always wait by itself while another process changes the journal mode.
    void setUp() {
        const auto deadline = std::chrono::steady_clock::now() + kBusyPatience;
        for (;;) {
            try {
                run("PRAGMA journal_mode = WAL");
                run("PRAGMA synchronous = NORMAL");
                run("CREATE TABLE IF NOT EXISTS preferences"
                    " (key TEXT PRIMARY KEY, kind INTEGER NOT NULL, value) WITHOUT ROWID");
                return;
            } catch (const SqliteError& error) {
                if (!error.busy() || std::chrono::steady_clock::now() > deadline) throw;
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            }
        }
    }
    void run(const char* sql) {
        if (sqlite3_exec(connection_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            throwError(connection_.get());
        }
    }
    Statement prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v3(connection_.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) !=
            SQLITE_OK) {
            throwError(connection_.get());
        }
        return Statement(statement);
    }

    std::unique_ptr<sqlite3, ConnectionDeleter> connection_;
    Statement select_;
    Statement upsert_;
    Statement delete_;
    Statement clear_;
};

SqliteStore::SqliteStore(std::filesystem::path file) : file_(std::move(file)) {}

SqliteStore::~SqliteStore() = default;

template <class Work>
void SqliteStore::withDatabase(const Work& work) {
    const std::lock_guard lock(mutex_);
    try {
        try {
            if (!database_) database_ = std::make_unique<Database>(file_);
            work(*database_);
        } catch (const SqliteError& error) {
            database_.reset();
            if (!error.broken()) throw;
            replaceBroken();
            work(*database_);
        }
    } catch (const std::exception& error) {
        database_.reset();
        tell(file_, error.what());
    }
}

void SqliteStore::replaceBroken() {
    const FileLock lock(withSuffix(file_, ".lock"));
    try {
        auto database = std::make_unique<Database>(file_);
        database->check();
        // Another process was here first.
        database_ = std::move(database);
    } catch (const SqliteError& error) {
        if (!error.broken()) throw;
        renameBroken(file_);
        database_ = std::make_unique<Database>(file_);
    }
}

std::optional<KeyValueStore::Value> SqliteStore::get(std::string_view key) {
    std::optional<Value> value;
    withDatabase([&](Database& database) { value = database.get(key); });
    return value;
}

void SqliteStore::put(std::string_view key, const Value& value) {
    withDatabase([&](Database& database) { database.put(key, value); });
}

void SqliteStore::remove(std::string_view key) {
    withDatabase([&](Database& database) { database.remove(key); });
}

void SqliteStore::clear() {
    withDatabase([](Database& database) { database.clear(); });
}

void SqliteStore::sync() {
    withDatabase([](Database& database) { database.sync(); });
}

}  // namespace baseapi::inline v1
