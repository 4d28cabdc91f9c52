#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillboxd {

class Database;

// The numbers of both stand on the wire.
enum class ShareFolderStatus { open = 0, full = 1 };
enum class ShareFolderQuery { all = 0, own = 1, joined = 2 };

/// A folder of an account with a group of people who share albums in it. It is called as its folder in the
/// tree, and ends with that.
struct ShareFolder {
    static constexpr std::int64_t mostMembers = 10;

    std::int64_t id = 0;  ///< of the folder, and of its group
    std::int64_t owner = 0;
    std::string ownerName;
    std::string container;
    std::int64_t node = 0;
    std::optional<std::int64_t> albumRoot;  ///< the folder in it that takes those of the albums
    std::string name;
    std::string createdTime;
    std::int64_t members = 0;  ///< the owner too

    ShareFolderStatus status() const {
        return members < mostMembers ? ShareFolderStatus::open : ShareFolderStatus::full;
    }
};

struct ShareFolderFilter {
    std::string keyWord;
    std::optional<ShareFolderStatus> status;
    ShareFolderQuery query = ShareFolderQuery::all;
};

/// The share folders that an account is in.
class ShareFolders {
  public:
    ShareFolders(Database& database, std::int64_t account) : database_(database), account_(account) {}

    /// Takes in a new one of the account's own.
    ShareFolder add(std::int64_t node, std::int64_t albumRoot);
    void remove(std::int64_t id);
    void setAlbumRoot(std::int64_t id, std::int64_t node);

    std::optional<ShareFolder> find(std::int64_t id);
    bool hasMember(std::int64_t id);

    /// The newest first; at most `limit` after the first `offset`.
    std::vector<ShareFolder> list(const ShareFolderFilter& filter, std::int64_t offset, std::int64_t limit);
    std::int64_t count(const ShareFolderFilter& filter);

    /// Makes the account a member; one that is stays one. Throws where the folder is full, or is not there.
    void join(std::int64_t id);

  private:
    Database& database_;
    std::int64_t account_;
};

}  // namespace quillboxd
