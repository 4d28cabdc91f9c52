#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillboxd/store/time_text.h"

namespace quillboxd {

class Database;
enum class ChangeKind;

/// A folder or a file. The root folder is the node 0 of every account; it is "root" on the wire.
struct Node {
    std::int64_t id = 0;
    std::int64_t parent = 0;
    std::string name;
    bool isFile = false;
    bool recycled = false;
    bool hidden = false;
    std::string fileType;
    std::string mimeType;
    std::string description;
    std::string scene;
    std::string createdTime;
    std::string editedTime;
    std::optional<std::int64_t> content;
    std::string sha256;
    std::int64_t size = 0;
    std::int64_t account = 0;                ///< whose it is
    std::optional<std::string> starredTime;  ///< of a favourite
    std::int64_t version = 0;                ///< number of its newest revision
};

/// What to do where the name is taken already. The numbers stand on the wire.
enum class NameRule { refuse = 1, rename = 2, reportExisting = 3, renameUnlessSame = 4, replaceContent = 5 };

/// Throws for a number that is no rule, or one behind `last`.
NameRule nameRule(std::int64_t number, std::string_view key, NameRule last = NameRule::renameUnlessSame);

enum class SortKey { name, edited, size, created, starred };

/// One page of a listing or a search.
struct PageRequest {
    SortKey sort = SortKey::name;
    bool descending = false;
    std::int64_t size = 1000;
    std::string cursor;  ///< as an earlier page gave it, or empty
};

struct Page {
    std::vector<Node> nodes;
    std::string nextCursor;  ///< empty after the last page
};

struct SearchFilter {
    std::string keyWord;
    std::optional<std::int64_t> folder;  ///< absent: everywhere
    bool recursive = false;
    bool recycled = false;
    std::string fileType;
};

struct FolderStats {
    std::int64_t size = 0;
    std::int64_t folders = 0;
    std::int64_t files = 0;
};

/// The folders and files of one account.
class Tree {
  public:
    Tree(Database& database, std::int64_t account) : database_(database), account_(account) {}

    static std::string wireId(std::int64_t node);
    static std::optional<std::int64_t> fromWireId(std::string_view id);
    static Node root();

    // Each of these throws ApiError where the id leads to nothing or to the wrong kind. An empty id is the
    // root.
    Node require(std::string_view wireId);
    Node requireFile(std::string_view wireId);
    std::int64_t requireFolder(std::string_view wireId);

    std::optional<Node> find(std::int64_t id);
    std::optional<Node> child(std::int64_t parent, std::string_view name);

    /// The name itself, or the first of "name (1).ext", "name (2).ext", ... that is free.
    std::string freeName(std::int64_t parent, const std::string& name, bool isFile);

    /// Takes a new node in: a file with content or a folder, or (live false) a file still to come.
    void insert(const Node& node, bool live);

    /// A file that was taken in with live false.
    Node requireUnfinished(std::int64_t id);
    void publish(std::int64_t node, std::string_view name, std::int64_t content);

    /// Gives a file another content, as its newest revision.
    void replaceContent(std::int64_t node, std::int64_t content);

    /// A new folder; throws where the name cannot be one, or is taken.
    Node addFolder(std::int64_t parent, const std::string& name);

    void rename(std::int64_t node, std::string_view name);
    void move(std::int64_t node, std::int64_t parent, std::string_view name);

    /// A file, or a folder that holds nothing people see; files still to come into it are given up.
    void remove(std::int64_t node);
    bool isEmpty(std::int64_t folder);

    /// The name that an item gets in a folder, by the rule for names that are taken; throws where it refuses.
    std::string chooseName(std::int64_t parent, const std::string& name, bool isFile, NameRule rule);

    /// The item at a path of names from the root folder; throws ApiError where there is none.
    Node requireAt(std::string_view namePath);

    /// Makes it a favourite, or no more one. What is one already stays one since the same time.
    void star(std::int64_t node, bool starred);

    Page list(std::int64_t folder, bool withHidden, std::string_view fileType, const PageRequest& page);
    /// All that is below a folder, or its files or folders alone.
    Page walk(std::int64_t folder, bool withHidden, std::optional<bool> files, const PageRequest& page);
    Page search(const SearchFilter& filter, const PageRequest& page);
    std::int64_t countMatches(const SearchFilter& filter);
    Page favourites(const PageRequest& page);
    FolderStats stats(std::int64_t folder, bool recursive);

    /// From the topmost folder down to the node itself.
    std::vector<Node> path(const Node& node);

  private:
    void note(ChangeKind kind, std::int64_t node);

    Database& database_;
    std::int64_t account_;
};

/// A file or folder of now, to be filled further and inserted; checks its name.
Node newNode(std::int64_t parent, const std::string& name, bool isFile);

/// "/photos/2024" and "/17/42"; the root folder is "/".
std::string namePath(const std::vector<Node>& path);
std::string idPath(const std::vector<Node>& path);

/// The nodes, whoever owns them, that a condition over the columns of `items` picks and whose names hold the
/// key word; ?2 in the condition stands for `set`.
Page pickNodes(Database& database, std::string_view condition, std::int64_t set, std::string_view keyWord,
               const PageRequest& page);

/// How many nodes the condition picks.
std::int64_t countNodes(Database& database, std::string_view condition, std::int64_t set);

/// Throws for a name that no item can have.
void checkName(std::string_view name);

}  // namespace quillboxd
