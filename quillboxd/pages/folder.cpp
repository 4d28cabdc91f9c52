#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/html.h"
#include "quillboxd/pages/pages.h"
#include "quillboxd/pages/picture.h"
#include "quillboxd/pages/view.h"
#include "quillboxd/store/users.h"

namespace quillboxd::pages {
namespace {

constexpr Column itemColumns[] = {
    {"Name", "any"}, {"Size", "number"}, {"Type", "any"}, {"Changed"}, {"Id", "number"}};

User requireUser(Call& call) {
    const auto id = numberIn(call.wildcards[0], "the account in the path");
    auto user = Users(call.service.database).find(id);
    if (!user) notFound("there is no account " + std::to_string(id));
    return *std::move(user);
}

/// Its text stands beside the picture, which therefore says nothing to those who cannot see it.
std::string pictureLink(const Node& file, const std::string& name) {
    const auto address = pictureAddress(file);
    return htmlLink(address, "<span class=\"item\"><img src=\"" + address +
                                 "\" alt=\"\" loading=\"lazy\"><span>" + name + "</span></span>");
}

std::string itemName(Call& call, const Node& node) {
    const auto name = plain(node.name);
    const std::string hidden = node.hidden ? " <span class=\"quiet\">(hidden)</span>" : "";
    if (!node.isFile) return htmlLink(folderAddress(node.account, node.id), name + '/') + hidden;
    return (isPicture(call.service, node) ? pictureLink(node, name) : name) + hidden;
}

Row itemRow(Call& call, const Node& node) {
    return {itemName(call, node), node.isFile ? sizeText(node.size) : "",
            plain(node.isFile ? node.mimeType : "folder"), timeCell(node.editedTime),
            std::to_string(node.id)};
}

/// The way from the account's root folder to this one.
std::string trail(const User& user, const std::vector<Node>& path) {
    auto html = "<nav class=\"trail\" aria-label=\"Folders above\">" + accountLink(user.id, user.name);
    for (const auto& step : path) html += " / " + htmlLink(folderAddress(user.id, step.id), plain(step.name));
    return html + "</nav>\n";
}

std::string held(Tree& tree, std::int64_t folder) {
    const auto stats = tree.stats(folder, false);
    return "<p>" + counted(stats.folders, "folder") + ", " + counted(stats.files, "file") + ", " +
           sizeText(stats.size) + "</p>\n";
}

}  // namespace

std::string folderAddress(std::int64_t account, std::int64_t folder) {
    return std::string(root) + "folders/" + std::to_string(account) + '/' + Tree::wireId(folder);
}

std::string accountLink(std::int64_t account, std::string_view name) {
    return htmlLink(folderAddress(account, 0), plain(name));
}

Reply folder(Call& call) {
    const auto user = requireUser(call);
    Tree tree(call.service.database, user.id);
    const auto id = tree.requireFolder(call.wildcards[1]);
    const auto path = id == 0 ? std::vector<Node>() : tree.path(tree.require(call.wildcards[1]));
    PageRequest request;
    request.size = 100;
    request.cursor = call.request.parameter("cursor").value_or("");
    const auto found = tree.list(id, true, "", request);
    std::vector<Row> rows;
    for (const auto& node : found.nodes) rows.push_back(itemRow(call, node));
    auto html = trail(user, path) + held(tree, id) + table("Folders and files, by name", itemColumns, rows);
    if (!found.nextCursor.empty())
        html += more(folderAddress(user.id, id) + "?cursor=" + encodePercent(found.nextCursor), "More files");
    return page(path.empty() ? "Files of " + user.name : path.back().name, html);
}

}  // namespace quillboxd::pages
