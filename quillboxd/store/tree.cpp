#include "quillboxd/store/tree.h"

#include <algorithm>
#include <charconv>
#include <variant>

#include "quillboxd/crypto/random.h"
#include "quillboxd/error.h"
#include "quillboxd/json.h"
#include "quillboxd/store/cursor.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/revisions.h"
#include "quillboxd/store/sync_folders.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

constexpr std::size_t longestName = 1000;

const std::string selectItems =
    "SELECT id, parent, name, is_file, recycled, hidden, file_type, mime_type, description, scene, "
    "created_time, "
    "edited_time, content, sha256, size, account, starred_time, "
    "(SELECT coalesce(max(number), 0) FROM revisions WHERE node = items.id) FROM items ";

Node readNode(const Query& row) {
    Node node;
    node.id = row.integer(0);
    node.parent = row.integer(1);
    node.name = row.text(2);
    node.isFile = row.boolean(3);
    node.recycled = row.boolean(4);
    node.hidden = row.boolean(5);
    node.fileType = row.text(6);
    node.mimeType = row.text(7);
    node.description = row.text(8);
    node.scene = row.text(9);
    node.createdTime = row.text(10);
    node.editedTime = row.text(11);
    node.content = row.optionalInteger(12);
    node.sha256 = row.text(13);
    node.size = row.integer(14);
    node.account = row.integer(15);
    node.starredTime = row.optionalText(16);
    node.version = row.integer(17);
    return node;
}

// All folders below ?2, itself included; an absent ?2 leaves a search unbounded.
constexpr const char* foldersBelow =
    "(WITH RECURSIVE below (id) AS (SELECT ?2 UNION SELECT nodes.id FROM nodes JOIN below ON parent = "
    "below.id "
    "WHERE account = ?1 AND live = 1 AND is_file = 0) SELECT id FROM below)";

std::string searchCondition(const SearchFilter& filter) {
    return "WHERE account = ?1 AND (?2 IS NULL OR parent " +
           (filter.recursive ? std::string("IN ") + foldersBelow : std::string("= ?2")) +
           ") AND instr(fold_case(name), ?3) > 0 AND recycled = ?4 AND (?5 = '' OR file_type = ?5) ";
}

std::string column(SortKey key) {
    switch (key) {
        case SortKey::name:
            return "name";
        case SortKey::edited:
            return "edited_time";
        case SortKey::size:
            return "size";
        case SortKey::created:
            return "created_time";
        case SortKey::starred:
            return "starred_time";
    }
    return "name";
}

/// The end of a SELECT: what follows the cursor's place (the parameters ?6, ?7, ?8), in order, ?9 rows of it.
/// Folders come before files in either direction.
std::string pageClause(const PageRequest& page) {
    const auto key = column(page.sort);
    const char* order = page.descending ? " DESC" : "";
    const char* beyond = page.descending ? ") < (?7, ?8)" : ") > (?7, ?8)";
    return "AND (?6 IS NULL OR is_file > ?6 OR (is_file = ?6 AND (" + key + ", id" + beyond +
           ")) ORDER BY is_file, " + key + order + ", id" + order + " LIMIT ?9";
}

json::value sortValue(const Node& node, SortKey key) {
    switch (key) {
        case SortKey::name:
            return json::string(node.name);
        case SortKey::edited:
            return json::string(node.editedTime);
        case SortKey::size:
            return node.size;
        case SortKey::created:
            return json::string(node.createdTime);
        case SortKey::starred:
            return json::string(node.starredTime.value_or(""));
    }
    return nullptr;
}

/// The place after a page's last item.
struct NodePlace {
    std::optional<bool> isFile;
    std::variant<std::string, std::int64_t> key;
    std::int64_t id = 0;
};

NodePlace readNodePlace(const PageRequest& page) {
    if (page.cursor.empty()) return {};
    const auto fields = readCursor(page.cursor);
    const bool bySize = page.sort == SortKey::size;
    if (!fields || fields->size() != 3 || !(*fields)[0].is_bool() || !(*fields)[2].is_int64() ||
        !(bySize ? (*fields)[1].is_int64() : (*fields)[1].is_string())) {
        badRequest("the page cursor is not one that this service gave for this order");
    }
    NodePlace place;
    place.isFile = (*fields)[0].get_bool();
    place.id = (*fields)[2].get_int64();
    if (bySize) {
        place.key = (*fields)[1].get_int64();
    } else {
        place.key = std::string((*fields)[1].get_string());
    }
    return place;
}

/// Reads the rows of a query for one more than the page holds.
Page readPage(Query& rows, const PageRequest& request) {
    Page page;
    while (rows.next()) {
        if (static_cast<std::int64_t>(page.nodes.size()) == request.size) {
            const auto& last = page.nodes.back();
            page.nextCursor = writeCursor({last.isFile, sortValue(last, request.sort), last.id});
            break;
        }
        page.nodes.push_back(readNode(rows));
    }
    return page;
}

/// Runs a paged SELECT whose condition has five parameters.
template <class... Filter>
Page runPage(Database& database, const std::string& select, const PageRequest& page,
             const Filter&... filter) {
    static_assert(sizeof...(filter) == 5);
    const auto place = readNodePlace(page);
    auto rows = database.query(select + pageClause(page), filter..., place.isFile, place.key, place.id,
                               page.size + 1);
    return readPage(rows, page);
}

}  // namespace

NameRule nameRule(std::int64_t number, std::string_view key, NameRule last) {
    if (number < 1 || number > static_cast<int>(last))
        badRequest("\"" + std::string(key) + "\" must be a number from 1 to " +
                   std::to_string(static_cast<int>(last)));
    return static_cast<NameRule>(number);
}

std::string Tree::wireId(std::int64_t node) {
    return node == 0 ? "root" : std::to_string(node);
}

std::optional<std::int64_t> Tree::fromWireId(std::string_view id) {
    if (id.empty() || id == "root") return 0;
    std::int64_t node = 0;
    const auto [end, error] = std::from_chars(id.data(), id.data() + id.size(), node);
    if (error != std::errc() || end != id.data() + id.size() || node <= 0) return std::nullopt;
    return node;
}

Node Tree::root() {
    Node node;
    node.fileType = "10";
    return node;
}

Node Tree::require(std::string_view id) {
    const auto number = fromWireId(id);
    auto node = number ? find(*number) : std::nullopt;
    if (!node) notFound("there is no file or folder \"" + std::string(id) + "\"");
    return *node;
}

Node Tree::requireFile(std::string_view id) {
    auto node = require(id);
    if (!node.isFile) badRequest("\"" + std::string(id) + "\" is a folder, not a file");
    return node;
}

std::int64_t Tree::requireFolder(std::string_view id) {
    const auto node = require(id);
    if (node.isFile) badRequest("\"" + std::string(id) + "\" is a file, not a folder");
    return node.id;
}

std::optional<Node> Tree::find(std::int64_t id) {
    if (id == 0) return root();
    auto row = database_.query(selectItems + "WHERE id = ? AND account = ?", id, account_);
    return row.next() ? std::optional(readNode(row)) : std::nullopt;
}

std::optional<Node> Tree::child(std::int64_t parent, std::string_view name) {
    auto row = database_.query(selectItems + "WHERE account = ? AND parent = ? AND name = ? AND recycled = 0",
                               account_, parent, name);
    return row.next() ? std::optional(readNode(row)) : std::nullopt;
}

std::string Tree::freeName(std::int64_t parent, const std::string& name, bool isFile) {
    const auto dot = isFile ? name.rfind('.') : std::string::npos;
    const auto stemLength = dot == 0 || dot == std::string::npos ? name.size() : dot;
    auto candidate = name;
    for (int count = 1; child(parent, candidate); ++count) {
        candidate = name.substr(0, stemLength) + " (" + std::to_string(count) + ")" + name.substr(stemLength);
    }
    return candidate;
}

void Tree::insert(const Node& node, bool live) {
    database_.run(
        "INSERT INTO nodes (id, account, parent, name, is_file, live, hidden, file_type, mime_type, "
        "description, "
        "scene, created_time, edited_time, content) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        node.id, account_, node.parent, node.name, node.isFile, live, node.hidden, node.fileType,
        node.mimeType, node.description, node.scene, node.createdTime, node.editedTime, node.content);
    if (live) note(ChangeKind::created, node.id);
}

Node Tree::requireUnfinished(std::int64_t id) {
    auto row = database_.query("SELECT parent, name FROM nodes WHERE id = ? AND account = ? AND live = 0", id,
                               account_);
    if (!row.next()) notFound("there is no unfinished file \"" + wireId(id) + "\"");
    Node file;
    file.id = id;
    file.parent = row.integer(0);
    file.name = row.text(1);
    file.isFile = true;
    return file;
}

void Tree::publish(std::int64_t node, std::string_view name, std::int64_t content) {
    database_.run("UPDATE nodes SET live = 1, name = ?, content = ? WHERE id = ?", name, content, node);
    note(ChangeKind::created, node);
}

void Tree::replaceContent(std::int64_t node, std::int64_t content) {
    const auto now = timestamp();
    database_.run("UPDATE nodes SET content = ?, edited_time = ? WHERE id = ?", content, now, node);
    Revisions(database_).prune(node);
    note(ChangeKind::changed, node);
}

Node Tree::addFolder(std::int64_t parent, const std::string& name) {
    auto folder = newNode(parent, name, false);
    folder.name = chooseName(parent, name, false, NameRule::refuse);
    insert(folder, true);
    return folder;
}

void Tree::rename(std::int64_t node, std::string_view name) {
    const auto now = timestamp();
    database_.run("UPDATE nodes SET name = ?, edited_time = ? WHERE id = ?", name, now, node);
    note(ChangeKind::renamed, node);
}

void Tree::star(std::int64_t node, bool starred) {
    const auto now = timestamp();
    database_.run(
        "UPDATE nodes SET starred_time = CASE WHEN ? THEN coalesce(starred_time, ?) END WHERE id = ?",
        starred, now, node);
}

void Tree::move(std::int64_t node, std::int64_t parent, std::string_view name) {
    const auto before = find(node).value();
    database_.run("UPDATE nodes SET parent = ?, name = ? WHERE id = ?", parent, name, node);
    SyncFolders(database_, account_).noteMove(before, find(node).value());
}

void Tree::remove(std::int64_t node) {
    note(ChangeKind::removed, node);
    // With it goes what is still to come: into the folder, or in place of the file's content.
    const char* const both =
        "(SELECT id FROM nodes WHERE account = ?1 AND (id = ?2 OR (parent = ?2 AND live = 0)))";
    for (const char* table : {"parts WHERE node IN ", "uploads WHERE node IN ",
                              "accesses WHERE account = ?1 AND node IN ", "nodes WHERE id IN "})
        database_.run(std::string("DELETE FROM ") + table + both, account_, node);
}

bool Tree::isEmpty(std::int64_t folder) {
    auto row = database_.query("SELECT 1 FROM items WHERE account = ? AND parent = ?", account_, folder);
    return !row.next();
}

std::string Tree::chooseName(std::int64_t parent, const std::string& name, bool isFile, NameRule rule) {
    if (!child(parent, name)) return name;
    if (rule == NameRule::refuse || rule == NameRule::reportExisting)
        conflict(Code::nameExists, "the name \"" + name + "\" is taken in this folder");
    return freeName(parent, name, isFile);
}

Node Tree::requireAt(std::string_view namePath) {
    if (!namePath.starts_with('/'))
        badRequest("the path \"" + std::string(namePath) + "\" does not begin with a slash");
    auto node = root();
    for (auto rest = namePath.substr(1); !rest.empty();) {
        const auto name = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        auto next = child(node.id, name);
        if (!next) notFound("there is no file or folder \"" + std::string(namePath) + "\"");
        node = *std::move(next);
    }
    return node;
}

void Tree::note(ChangeKind kind, std::int64_t node) {
    SyncFolders(database_, account_).note(kind, node);
}

Page Tree::list(std::int64_t folder, bool withHidden, std::string_view fileType, const PageRequest& page) {
    const auto select = selectItems +
                        "WHERE account = ?1 AND parent = ?2 AND (?3 OR hidden = 0) AND recycled = ?4 "
                        "AND (?5 = '' OR file_type = ?5) ";
    return runPage(database_, select, page, account_, folder, withHidden, false, fileType);
}

Page Tree::walk(std::int64_t folder, bool withHidden, std::optional<bool> files, const PageRequest& page) {
    // A hidden folder hides what it holds.
    const auto select = selectItems +
                        "WHERE account = ?1 AND parent IN (WITH RECURSIVE below (id) AS (SELECT ?2 UNION "
                        "SELECT nodes.id FROM nodes JOIN below ON parent = below.id WHERE account = ?1 "
                        "AND live = 1 AND is_file = 0 AND (?3 OR hidden = 0)) SELECT id FROM below) "
                        "AND (?3 OR hidden = 0) AND recycled = ?4 AND (?5 IS NULL OR is_file = ?5) ";
    return runPage(database_, select, page, account_, folder, withHidden, false, files);
}

Page Tree::search(const SearchFilter& filter, const PageRequest& page) {
    return runPage(database_, selectItems + searchCondition(filter), page, account_, filter.folder,
                   foldCase(filter.keyWord), filter.recycled, filter.fileType);
}

std::int64_t Tree::countMatches(const SearchFilter& filter) {
    const auto keyWord = foldCase(filter.keyWord);
    auto count = database_.query("SELECT count(*) FROM items " + searchCondition(filter), account_,
                                 filter.folder, keyWord, filter.recycled, filter.fileType);
    count.next();
    return count.integer(0);
}

Page Tree::favourites(const PageRequest& page) {
    const auto select = selectItems + "WHERE account = ?1 AND recycled = ?2 AND starred_time IS NOT NULL ";
    const auto none = std::nullopt;
    return runPage(database_, select, page, account_, false, none, none, none);
}

FolderStats Tree::stats(std::int64_t folder, bool recursive) {
    const std::string scope = recursive ? std::string("IN ") + foldersBelow : "= ?2";
    auto sums = database_.query(
        "SELECT coalesce(sum(size), 0), count(*) - coalesce(sum(is_file), 0), coalesce(sum(is_file), 0) "
        "FROM items WHERE account = ?1 AND recycled = 0 AND parent " +
            scope,
        account_, folder);
    sums.next();
    return {sums.integer(0), sums.integer(1), sums.integer(2)};
}

std::vector<Node> Tree::path(const Node& node) {
    std::vector<Node> path;
    for (std::optional<Node> step = node; step && step->id != 0; step = find(step->parent))
        path.push_back(*step);
    std::reverse(path.begin(), path.end());
    return path;
}

Node newNode(std::int64_t parent, const std::string& name, bool isFile) {
    checkName(name);
    Node node;
    node.id = randomId();
    node.parent = parent;
    node.name = name;
    node.isFile = isFile;
    node.fileType = isFile ? "45" : "10";
    node.mimeType = isFile ? "application/octet-stream" : "application/x-directory";
    node.createdTime = timestamp();
    node.editedTime = node.createdTime;
    return node;
}

std::string namePath(const std::vector<Node>& path) {
    std::string text;
    for (const auto& step : path) text += '/' + step.name;
    return text.empty() ? "/" : text;
}

std::string idPath(const std::vector<Node>& path) {
    std::string text;
    for (const auto& step : path) text += '/' + Tree::wireId(step.id);
    return text.empty() ? "/" : text;
}

Page pickNodes(Database& database, std::string_view condition, std::int64_t set, std::string_view keyWord,
               const PageRequest& page) {
    const auto select = selectItems + "WHERE recycled = 0 AND instr(fold_case(name), ?3) > 0 AND (" +
                        std::string(condition) + ") ";
    const auto folded = foldCase(keyWord);
    return runPage(database, select, page, std::nullopt, set, folded, false, std::string_view());
}

std::int64_t countNodes(Database& database, std::string_view condition, std::int64_t set) {
    auto count =
        database.query("SELECT count(*) FROM items WHERE recycled = 0 AND (" + std::string(condition) + ")",
                       std::nullopt, set);
    count.next();
    return count.integer(0);
}

void checkName(std::string_view name) {
    const std::string quoted = "the name \"" + std::string(name.substr(0, 100)) + "\"";
    if (name.empty()) badRequest("the name is empty");
    if (name == "." || name == "..") badRequest(quoted + " stands for a folder itself");
    if (name.find('/') != name.npos || name.find('\0') != name.npos) {
        badRequest(quoted + " holds a slash or a zero byte");
    }
    if (name.size() > longestName) badRequest(quoted + "... is longer than 1000 bytes");
}

}  // namespace quillboxd
