#include "quillboxd/store/shares.h"

#include <algorithm>

#include "quillboxd/crypto/random.h"
#include "quillboxd/crypto/sha256.h"
#include "quillboxd/error.h"
#include "quillboxd/store/cursor.h"
#include "quillboxd/store/database.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

const std::string selectShares =
    "SELECT id, account, short_url, scope, preview, edit, download, extract_code, expire_time, comment, "
    "share_time, update_time, views, downloads, title FROM titled_shares ";

Share readShare(const Query& row) {
    Share share;
    share.id = row.integer(0);
    share.account = row.integer(1);
    share.shortUrl = row.text(2);
    share.scope = static_cast<ShareScope>(row.integer(3));
    share.permission = {row.boolean(4), row.boolean(5), row.boolean(6)};
    share.extractCode = row.text(7);
    share.expireTime = row.text(8);
    share.comment = row.text(9);
    share.shareTime = row.text(10);
    share.updateTime = row.text(11);
    share.views = row.integer(12);
    share.downloads = row.integer(13);
    share.title = row.text(14);
    return share;
}

const std::string& sortText(const Share& share, const SharePageRequest& page) {
    return page.byTitle ? share.title : share.shareTime;
}

/// The place after a page's last link.
struct SharePlace {
    std::optional<std::string> key;
    std::int64_t id = 0;
};

SharePlace readSharePlace(const SharePageRequest& page) {
    if (page.cursor.empty()) return {};
    const auto fields = readCursor(page.cursor);
    if (!fields || fields->size() != 2 || !(*fields)[0].is_string() || !(*fields)[1].is_int64())
        badRequest("the page cursor is not one that this service gave");
    return {std::string((*fields)[0].get_string()), (*fields)[1].get_int64()};
}

}  // namespace

ShareStatus Share::status() const {
    if (!expireTime.empty() && expireTime <= timestamp()) return ShareStatus::expired;
    return title.empty() ? ShareStatus::empty : ShareStatus::open;
}

Share Shares::add(Share share, const std::vector<std::int64_t>& nodes) {
    const auto shortUrl = hex(randomBytes(8));
    const auto now = timestamp();
    std::int64_t id = 0;
    {
        auto row = database_.query(
            "INSERT INTO shares (account, short_url, scope, share_time) VALUES (?, ?, ?, ?) RETURNING id",
            share.account, shortUrl, static_cast<int>(share.scope), now);
        row.next();
        id = row.integer(0);
    }
    for (const auto node : nodes)
        database_.run("INSERT OR IGNORE INTO share_files (share, node) VALUES (?, ?)", id, node);
    share.id = id;
    return change(share);
}

Share Shares::change(const Share& share) {
    const auto now = timestamp();
    const auto& [preview, edit, download] = share.permission;
    database_.run(
        "UPDATE shares SET preview = ?, edit = ?, download = ?, extract_code = ?, expire_time = ?, "
        "comment = ?, update_time = ? WHERE id = ?",
        preview, edit, download, share.extractCode, share.expireTime, share.comment, now, share.id);
    return *find(share.id);
}

bool Shares::remove(std::int64_t account, std::int64_t id) {
    auto row = database_.query("DELETE FROM shares WHERE account = ? AND id = ? RETURNING id", account, id);
    return row.next();
}

std::optional<Share> Shares::find(std::int64_t id) {
    auto row = database_.query(selectShares + "WHERE id = ?", id);
    return row.next() ? std::optional(readShare(row)) : std::nullopt;
}

std::optional<Share> Shares::find(std::string_view shortUrl) {
    auto row = database_.query(selectShares + "WHERE short_url = ?", shortUrl);
    return row.next() ? std::optional(readShare(row)) : std::nullopt;
}

SharePage Shares::list(std::int64_t account, const SharePageRequest& page) {
    const auto place = readSharePlace(page);
    const auto keyWord = foldCase(page.keyWord);
    const std::string key = page.byTitle ? "title" : "share_time";
    const std::string order = page.descending ? " DESC" : "";
    auto rows = database_.query(
        selectShares + "WHERE account = ?1 AND instr(fold_case(title), ?2) > 0 AND (?3 IS NULL OR (" + key +
            ", id) " + (page.descending ? "<" : ">") + " (?3, ?4)) ORDER BY " + key + order + ", id" + order +
            " LIMIT ?5",
        account, keyWord, place.key, place.id, page.size + 1);
    SharePage found;
    while (rows.next()) found.shares.push_back(readShare(rows));
    if (static_cast<std::int64_t>(found.shares.size()) > page.size) {
        found.shares.pop_back();
        const auto& last = found.shares.back();
        found.nextCursor = writeCursor({json::string(sortText(last, page)), last.id});
    }
    return found;
}

void Shares::setAudience(std::int64_t id, Audience kind, const std::vector<std::string>& members) {
    const int number = static_cast<int>(kind);
    database_.run("DELETE FROM share_audience WHERE share = ? AND kind = ?", id, number);
    for (const auto& member : members) {
        database_.run("INSERT OR IGNORE INTO share_audience (share, kind, member) VALUES (?, ?, ?)", id,
                      number, member);
    }
}

std::vector<std::string> Shares::audience(std::int64_t id, Audience kind) {
    auto rows =
        database_.query("SELECT member FROM share_audience WHERE share = ? AND kind = ? ORDER BY rowid", id,
                        static_cast<int>(kind));
    std::vector<std::string> members;
    while (rows.next()) members.push_back(rows.text(0));
    return members;
}

Page Shares::files(std::int64_t id, std::string_view keyWord, const PageRequest& page) {
    return pickNodes(database_, "id IN (SELECT node FROM share_files WHERE share = ?2)", id, keyWord, page);
}

std::vector<Node> Shares::pathInside(const Share& share, std::string_view wireId) {
    Tree tree(database_, share.account);
    const auto id = Tree::fromWireId(wireId);
    const auto node = id ? tree.find(*id) : std::nullopt;
    if (!node) return {};
    auto path = tree.path(*node);
    if (std::any_of(path.begin(), path.end(), [](const Node& step) { return step.recycled; })) return {};
    const auto named = std::find_if(path.begin(), path.end(), [&](const Node& step) {
        return database_.query("SELECT 1 FROM share_files WHERE share = ? AND node = ?", share.id, step.id)
            .next();
    });
    return {named, path.end()};
}

void Shares::countView(std::int64_t id) {
    database_.run("UPDATE shares SET views = views + 1 WHERE id = ?", id);
}

void Shares::countDownload(std::int64_t id) {
    database_.run("UPDATE shares SET downloads = downloads + 1 WHERE id = ?", id);
}

void Shares::expireAll() {
    const auto now = timestamp();
    database_.run("UPDATE shares SET expire_time = ?", now);
}

}  // namespace quillboxd
