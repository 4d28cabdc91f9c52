#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillboxd/crypto/sha256.h"
#include "quillboxd/store/tree.h"

namespace quillboxd {

class BlobStore;
class Database;

struct Part {
    std::int64_t number = 0;
    std::int64_t start = 0;
    std::int64_t size = 0;
    std::optional<Sha256::State> stateBefore;   ///< as the client says it
    std::string blob;                           ///< empty until the bytes are here
    std::optional<Sha256::State> stateAfter;    ///< reached from stateBefore, or from the start of the file
    std::optional<Sha256::Digest> digestAfter;  ///< of the file up to this part's end, by the same reckoning
};

struct Upload {
    std::int64_t node = 0;
    std::string sha256;
    std::int64_t length = 0;
    NameRule nameRule = NameRule::renameUnlessSame;
};

/// Files whose parts are on their way.
class Uploads {
  public:
    explicit Uploads(Database& database) : database_(database) {}

    void add(const Upload& upload, const std::vector<Part>& parts);
    std::optional<Upload> find(std::int64_t account, std::int64_t node);

    /// In the order of the file.
    std::vector<Part> parts(std::int64_t node);
    std::optional<Part> part(std::int64_t node, std::int64_t number);

    /// The part's bytes have arrived; those of an earlier arrival are no longer named.
    void received(std::int64_t node, const Part& part);

    /// The bytes that the account's uploads will need. One that has had no part for a day no longer counts.
    std::int64_t underWay(std::int64_t account);

    /// The upload has become a file.
    void remove(std::int64_t node);

  private:
    Database& database_;
};

/// Throws ApiError unless the parts cover the bytes from 0 to `length`, each once, in any order.
void checkTiling(std::vector<Part> parts, std::int64_t length);

/// Throws ApiError unless all parts are here and their bytes fit their states and the upload's hash.
void verifyParts(const Upload& upload, const std::vector<Part>& parts, const BlobStore& blobs);

}  // namespace quillboxd
