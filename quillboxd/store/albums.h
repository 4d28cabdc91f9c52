#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "quillboxd/store/tree.h"

namespace quillboxd {

/// Which files of its folders belong to an album. The numbers stand on the wire.
enum class ScopeKind { below = 1, direct = 2 };

/// A named set of files, whose folders stay what they are.
struct Album {
    std::int64_t id = 0;
    std::int64_t account = 0;  ///< who made it
    std::optional<std::int64_t> shareFolder;
    std::optional<std::int64_t> node;  ///< the folder of its own that an album of a share folder has
    std::string name;
    std::int64_t type = 1;
    std::int64_t kind = 1;
    ScopeKind scopeKind = ScopeKind::below;
    std::optional<std::int64_t> scopeParent;
    std::string cover;  ///< an address; empty where none is set
    std::string createdTime;
    std::string updatedTime;
};

struct AlbumFilter {
    std::string keyWord;
    std::optional<std::int64_t> creator;
    std::optional<std::int64_t> shareFolder;
    std::int64_t type = 0;  ///< 0: any
    std::int64_t kind = 0;  ///< 0: any
};

/// The albums that an account sees: its own, and those of the share folders it is in.
class Albums {
  public:
    Albums(Database& database, std::int64_t account) : database_(database), account_(account) {}

    Album add(const Album& album);
    /// Writes what a client can change.
    void change(const Album& album);
    void remove(std::int64_t id);
    std::optional<Album> find(std::int64_t id);
    /// Whether another album beside this one has its name.
    bool nameTaken(const Album& album);

    /// The newest first; at most `limit` after the first `offset`.
    std::vector<Album> list(const AlbumFilter& filter, std::int64_t offset, std::int64_t limit);
    std::int64_t count(const AlbumFilter& filter);

    /// The folders whose files belong to the album.
    void setScope(std::int64_t id, const std::vector<std::int64_t>& folders);
    std::vector<std::int64_t> scope(std::int64_t id);

    Page contents(std::int64_t id, const PageRequest& page);
    std::int64_t countContents(std::int64_t id);
    void include(std::int64_t id, std::int64_t file);
    /// False where the album does not hold the file.
    bool exclude(std::int64_t id, std::int64_t file);

  private:
    bool holds(std::int64_t id, std::int64_t file);
    void note(std::int64_t id, std::int64_t file, bool included);

    Database& database_;
    std::int64_t account_;
};

}  // namespace quillboxd
