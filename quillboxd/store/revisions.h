#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillboxd {

class Database;

/// What a file has held since one change of it. The newest is what it holds now.
struct Revision {
    std::int64_t id = 0;
    std::int64_t node = 0;
    std::int64_t number = 0;  ///< from 1 on, in the order of the changes
    std::int64_t content = 0;
    std::string sha256;
    std::int64_t size = 0;
    std::string createdTime;
    bool kept = false;  ///< for ever
};

class Revisions {
  public:
    /// How many of a file stay without being kept for ever.
    static constexpr std::int64_t longestHistory = 10;

    explicit Revisions(Database& database) : database_(database) {}

    /// The newest first.
    std::vector<Revision> list(std::int64_t node);
    std::optional<Revision> find(std::int64_t id);
    bool hasHeld(std::int64_t node, std::int64_t content);

    void keep(std::int64_t id, bool forEver);

    /// Forgets what is older than the longest history.
    void prune(std::int64_t node);

  private:
    Database& database_;
};

}  // namespace quillboxd
