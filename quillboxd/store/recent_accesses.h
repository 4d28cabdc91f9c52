#pragma once

#include <cstdint>
#include <vector>

namespace quillboxd {

class Database;

/// What was done with a file; the numbers stand on the wire.
enum class AccessKind { uploaded = 1, downloaded = 2, viewed = 3 };

struct Access {
    std::int64_t node = 0;
    AccessKind kind = AccessKind::viewed;
    std::int64_t millis = 0;  ///< since 1970
};

/// The latest access of each file of an account.
class RecentAccesses {
  public:
    static constexpr std::int64_t longestList = 100;

    RecentAccesses(Database& database, std::int64_t account) : database_(database), account_(account) {}

    void note(std::int64_t node, AccessKind kind);

    /// The newest first.
    std::vector<Access> latest();

  private:
    Database& database_;
    std::int64_t account_;
};

}  // namespace quillboxd
