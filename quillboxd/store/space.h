#pragma once

#include <cstdint>

namespace quillboxd {

class Database;

/// The room of an account. Every revision of every file takes its length, also where the service keeps the
/// same content for another file already.
class Space {
  public:
    Space(Database& database, std::int64_t account, std::int64_t quota)
        : database_(database), account_(account), quota_(quota) {}

    /// The quota, and what packages add to it.
    std::int64_t capacity();
    std::int64_t used();

    /// Throws ApiError unless a content of this length fits beside what is there and what uploads under way
    /// will need.
    void requireRoom(std::int64_t length);

  private:
    Database& database_;
    std::int64_t account_;
    std::int64_t quota_;
};

}  // namespace quillboxd
