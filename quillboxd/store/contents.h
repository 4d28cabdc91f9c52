#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillboxd {

class BlobStore;
class Database;

/// A run of bytes inside one blob.
struct Piece {
    std::string blob;
    std::int64_t offset = 0;
    std::int64_t length = 0;
};

/// What files hold: each content is kept once, whoever sent it, as the blobs of its parts in order.
class Contents {
  public:
    Contents(Database& database, BlobStore& blobs) : database_(database), blobs_(blobs) {}

    std::optional<std::int64_t> find(std::string_view sha256, std::int64_t length);
    std::int64_t add(std::string_view sha256, std::int64_t length, const std::vector<Piece>& pieces);

    /// Forgets what no file and no job holds any more.
    static void removeUnused(Database& database);

    /// The pieces of `length` bytes from `offset`, which lie inside the content.
    std::vector<Piece> pieces(std::int64_t content, std::int64_t offset, std::int64_t length);

    /// The bytes themselves, for a short run.
    std::string read(std::int64_t content, std::int64_t offset, std::int64_t length);

  private:
    Database& database_;
    BlobStore& blobs_;
};

}  // namespace quillboxd
