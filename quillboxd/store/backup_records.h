#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillboxd {

class Database;

/// The numbers stand on the wire.
enum class RecordStatus { open = 0, finished = 1 };

/// One backup of a device's module.
struct BackupRecord {
    std::int64_t id = 0;
    std::int64_t device = 0;
    std::string module;
    RecordStatus status = RecordStatus::open;
    std::int64_t version = 1;  ///< counts the changes
    std::optional<std::string> properties;
    std::string createdTime;
    std::optional<std::string> endTime;
};

struct RecordFile {
    std::int64_t node = 0;
    std::string name;
    std::string sha256;
    std::int64_t size = 0;
    std::string description;
    std::string createdTime;
};

/// Which records of a list are wanted, the newest first.
struct RecordPage {
    std::int64_t device = 0;  ///< 0 stands for all
    std::string module;       ///< an empty one stands for all
    std::int64_t size = 100;
    std::int64_t before = INT64_MAX;  ///< the id of the last record of the page before
};

/// The backup records of an account.
class BackupRecords {
  public:
    BackupRecords(Database& database, std::int64_t account) : database_(database), account_(account) {}

    BackupRecord add(std::int64_t device, std::string_view module,
                     const std::optional<std::string>& properties);
    std::optional<BackupRecord> find(std::int64_t id);
    std::vector<BackupRecord> list(const RecordPage& page);
    /// Absent properties leave those that are there.
    void finish(std::int64_t id, const std::optional<std::string>& properties);
    /// Its files stay where they are.
    void remove(std::int64_t id);

    void attach(std::int64_t record, std::int64_t node);
    /// Those whose content has arrived, at most `count`.
    std::vector<RecordFile> files(std::int64_t record, std::int64_t count);

  private:
    Database& database_;
    std::int64_t account_;
};

}  // namespace quillboxd
