#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillboxd/store/tree.h"

namespace quillboxd {

class Database;

/// Who may open a link. The numbers stand on the wire.
enum class ShareScope { anybody = 0, chosen = 1 };

/// What a link comes to. The numbers stand on the wire.
enum class ShareStatus { open = 0, expired = 1, empty = 2 };

/// Among whom a link's visitors are chosen.
enum class Audience { departments, groups, users };

struct SharePermission {
    bool preview = true;
    bool edit = false;
    bool download = true;
};

/// A link to files and folders of an account.
struct Share {
    std::int64_t id = 0;
    std::int64_t account = 0;
    std::string shortUrl;  ///< the last segment of its address
    ShareScope scope = ShareScope::anybody;
    SharePermission permission;
    std::string extractCode;  ///< empty: none
    std::string expireTime;   ///< empty: never
    std::string comment;
    std::string shareTime;
    std::string updateTime;
    std::int64_t views = 0;
    std::int64_t downloads = 0;
    std::string title;  ///< after what is in it; empty when nothing is left

    ShareStatus status() const;
};

struct SharePageRequest {
    std::string keyWord;
    bool byTitle = false;  ///< otherwise by the time of sharing
    bool descending = true;
    std::int64_t size = 1000;
    std::string cursor;  ///< as an earlier page gave it, or empty
};

struct SharePage {
    std::vector<Share> shares;
    std::string nextCursor;  ///< empty after the last page
};

/// The links of all accounts.
class Shares {
  public:
    explicit Shares(Database& database) : database_(database) {}

    /// Takes in a new link to these nodes; its id, address and times are made here.
    Share add(Share share, const std::vector<std::int64_t>& nodes);
    /// Writes what a client can change.
    Share change(const Share& share);
    bool remove(std::int64_t account, std::int64_t id);

    std::optional<Share> find(std::int64_t id);
    std::optional<Share> find(std::string_view shortUrl);
    SharePage list(std::int64_t account, const SharePageRequest& page);

    void setAudience(std::int64_t id, Audience kind, const std::vector<std::string>& members);
    std::vector<std::string> audience(std::int64_t id, Audience kind);

    /// What the link names itself.
    Page files(std::int64_t id, std::string_view keyWord, const PageRequest& page);
    /// From the item that the link names down to the node; empty where the link does not hold the node.
    std::vector<Node> pathInside(const Share& share, std::string_view wireId);

    void countView(std::int64_t id);
    void countDownload(std::int64_t id);
    void expireAll();

  private:
    Database& database_;
};

}  // namespace quillboxd
