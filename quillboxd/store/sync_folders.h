#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "quillboxd/store/tree.h"

namespace quillboxd {

enum class ChangeKind { created = 1, changed = 2, renamed = 3, moved = 4, removed = 5 };

/// From the view of one sync folder; the numbers stand on the wire.
enum class MoveType { within = 1, into = 2, outOf = 3 };

struct Change {
    std::int64_t id = 0;
    ChangeKind kind = ChangeKind::created;
    std::optional<MoveType> moveType;
    std::optional<std::int64_t> sourceParent;  ///< of a move
    std::string idPath;
    Node node;  ///< after the change; before it where it was removed
};

struct ChangePage {
    std::vector<Change> changes;
    bool hasMore = false;
};

/// The folders of an account whose changes are kept, each as a feed of its own. The number of a change is a
/// cursor: what follows it is what its reader does not know yet.
class SyncFolders {
  public:
    SyncFolders(Database& database, std::int64_t account) : database_(database), account_(account) {}

    /// Begins to keep the changes below the folder, where that is not done already.
    void open(std::int64_t folder);
    /// Forgets the changes. False where the folder is not open.
    bool close(std::int64_t folder);

    /// The number that the folder's feed begins behind; nothing where it is not open.
    std::optional<std::int64_t> start(std::int64_t folder);
    /// The newest number of all feeds.
    std::int64_t newest();
    ChangePage changes(std::int64_t folder, std::int64_t cursor, std::int64_t size);

    /// What has happened to a node, told to each sync folder above it.
    void note(ChangeKind kind, std::int64_t node);
    void noteMove(const Node& before, const Node& after);

  private:
    bool areAny();
    std::vector<std::int64_t> foldersAbove(const Node& node);
    void add(std::int64_t folder, const Change& change);

    Database& database_;
    std::int64_t account_;
};

}  // namespace quillboxd
