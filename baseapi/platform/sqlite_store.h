#pragma once

#include <filesystem>
#include <memory>
#include <mutex>

#include "baseapi/platform/key_value_store.h"

namespace baseapi::inline v1 {

/// A key-value store in one SQLite file, made on the first use in a folder for its owner alone. Each write is
/// a transaction of its own. A file that is no sound database any more is put aside under its name with
/// ".broken-" and a number, with a line on standard error, and a new one takes its place. Where the file
/// cannot be used at all (no permission, no room), values are absent and writes are dropped, each time with a
/// line on standard error, until it can be used again.
class SqliteStore final : public KeyValueStore {
  public:
    explicit SqliteStore(std::filesystem::path file);
    ~SqliteStore() override;
    SqliteStore(const SqliteStore&) = delete;
    SqliteStore& operator=(const SqliteStore&) = delete;

    std::optional<Value> get(std::string_view key) override;
    void put(std::string_view key, const Value& value) override;
    void remove(std::string_view key) override;
    void clear() override;
    void sync() override;

  private:
    class Database;
    template <class Work>
    void withDatabase(const Work& work);
    void replaceBroken();

    const std::filesystem::path file_;
    std::mutex mutex_;
    std::unique_ptr<Database> database_;
};

}  // namespace baseapi::inline v1
