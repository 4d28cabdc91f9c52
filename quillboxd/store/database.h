#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>

namespace quillboxd {

/// Bytes to bind as a blob.
struct Blob {
    std::string_view bytes;
};

/// One use of a prepared statement; its values are bound, its rows are read one by one.
class Query {
  public:
    explicit Query(sqlite3_stmt* statement) : statement_(statement) {}
    Query(Query&& other) noexcept : statement_(std::exchange(other.statement_, nullptr)) {}
    Query& operator=(Query&&) = delete;
    ~Query();

    /// Steps to the next row; false where there is none.
    bool next();

    std::int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
    bool boolean(int column) const { return integer(column) != 0; }
    std::string text(int column) const;
    bool isNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
    std::optional<std::string> optionalText(int column) const;
    std::optional<std::int64_t> optionalInteger(int column) const;

    void bind(int index, std::int64_t value);
    void bind(int index, int value) { bind(index, std::int64_t{value}); }
    void bind(int index, bool value) { bind(index, std::int64_t{value}); }
    void bind(int index, std::string_view value);
    void bind(int index, const std::string& value) { bind(index, std::string_view(value)); }
    void bind(int index, const char* value) { bind(index, std::string_view(value)); }
    void bind(int index, Blob value);
    void bind(int index, std::nullopt_t);
    template <class T>
    void bind(int index, const std::optional<T>& value) {
        if (value) {
            bind(index, *value);
        } else {
            bind(index, std::nullopt);
        }
    }

    template <class... T>
    void bind(int index, const std::variant<T...>& value) {
        std::visit([&](const auto& held) { bind(index, held); }, value);
    }

  private:
    sqlite3_stmt* statement_;
};

/// One SQLite connection, shared by all threads: whoever uses it holds a Transaction.
class Database {
  public:
    /// Opens or makes the file; ":memory:" keeps everything in memory.
    explicit Database(const std::string& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// The values are bound without a copy: they outlive the Query.
    template <class... Values>
    Query query(std::string_view sql, const Values&... values) {
        Query query(prepared(sql));
        int index = 0;
        (query.bind(++index, values), ...);
        return query;
    }

    template <class... Values>
    void run(std::string_view sql, const Values&... values) {
        Query use(prepared(sql));
        int index = 0;
        (use.bind(++index, values), ...);
        while (use.next()) {
        }
    }

    /// Several statements without values.
    void script(const char* sql);

  private:
    friend class Transaction;
    friend class Savepoint;
    sqlite3_stmt* prepared(std::string_view sql);

    sqlite3* connection_ = nullptr;
    std::unordered_map<std::string, sqlite3_stmt*> statements_;
    std::mutex mutex_;
};

/// Holds the database alone; what has not been committed at its end is undone.
class Transaction {
  public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// After this the change is there also when the process is killed.
    void commit();

  private:
    Database& database_;
    std::unique_lock<std::mutex> lock_;
    bool open_ = true;
};

/// A part of a transaction that can be undone alone: it is, at its end, unless it was kept.
class Savepoint {
  public:
    explicit Savepoint(Database& database) : database_(database) { database_.script("SAVEPOINT part"); }
    ~Savepoint();
    Savepoint(const Savepoint&) = delete;
    Savepoint& operator=(const Savepoint&) = delete;

    void keep() { kept_ = true; }

  private:
    Database& database_;
    bool kept_ = false;
};

}  // namespace quillboxd
