#include "quillboxd/store/sync_folders.h"

#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"

namespace quillboxd::sync {
namespace {

struct SyncFolder {
    Node node;
    bool existed = true;
};

SyncFolders syncStore(Call& call) {
    return {call.service.database, call.account.id};
}

const char* nameOf(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::created:
            return "create";
        case ChangeKind::changed:
            return "update";
        case ChangeKind::renamed:
            return "rename";
        case ChangeKind::moved:
            return "move";
        case ChangeKind::removed:
            return "delete";
    }
    return "";
}

/// The folder that a call names: by its id, or by its name and the folder that holds it or is to hold it.
SyncFolder findOrMake(Tree tree, const json::object& request) {
    const auto id = text(request, "fileId");
    if (!id.empty()) return {tree.require(id)};
    const auto name = requiredText(request, "fileName");
    const auto parent = tree.requireFolder(text(request, "parentFolder"));
    if (auto existing = tree.child(parent, name)) return {*std::move(existing)};
    auto folder = newNode(parent, name, false);
    folder.hidden = flag(request, "hidden", false);
    tree.insert(folder, true);
    return {std::move(folder), false};
}

/// The start of the folder's feed; throws where the folder is not open.
std::int64_t requireStart(Call& call, std::int64_t folder) {
    const auto start = syncStore(call).start(folder);
    if (!start) notFound("the folder \"" + Tree::wireId(folder) + "\" is no sync folder");
    return *start;
}

std::int64_t folderIn(const json::object& request, std::string_view key) {
    const auto id = requiredText(request, key);
    const auto folder = Tree::fromWireId(id);
    if (!folder) notFound("the folder \"" + id + "\" is no sync folder");
    return *folder;
}

std::int64_t readCursor(Call& call, const json::object& request, std::int64_t start) {
    const auto given = text(request, "cursor");
    if (given.empty()) return start;
    const auto cursor = numberIn(given, "\"cursor\"");
    if (cursor < start || cursor > syncStore(call).newest())
        conflict(Code::conflict, "the feed does not know the cursor " + given +
                                     ": walk the folder and go on from a new start cursor");
    return cursor;
}

json::object changeFields(const Call& call, const Change& change) {
    json::object more{{"idPath", change.idPath}};
    if (change.moveType) more["moveType"] = static_cast<int>(*change.moveType);
    if (change.sourceParent) more["srcParentFileId"] = Tree::wireId(*change.sourceParent);
    return {{"changeType", nameOf(change.kind)},
            {"fileInfo", files::listFields(call, change.node)},
            {"extInfo", std::move(more)}};
}

std::optional<bool> filesAlone(const std::string& type) {
    if (type.empty()) return std::nullopt;
    if (type != "file" && type != "folder") badRequest("\"type\" must be \"file\", \"folder\" or empty");
    return type == "file";
}

}  // namespace

Reply create(Call& call) {
    static constexpr Field shape[] = {{"container", Type::text},
                                      {"fileName", Type::text},
                                      {"hidden", Type::boolean},
                                      {"parentFolder", Type::text},
                                      {"fileId", Type::text}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "container"));
    const auto folder = findOrMake(call.tree(), request);
    if (folder.node.isFile) badRequest("\"" + folder.node.name + "\" is a file, not a folder");
    syncStore(call).open(folder.node.id);
    return success({{"container", call.account.container},
                    {"fileId", Tree::wireId(folder.node.id)},
                    {"fileName", folder.node.name},
                    {"exist", folder.existed}});
}

Reply close(Call& call) {
    static constexpr Field shape[] = {{"container", Type::text}, {"syncDirId", Type::text}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "container"));
    const auto folder = folderIn(request, "syncDirId");
    requireStart(call, folder);
    syncStore(call).close(folder);
    return success({{"syncDirId", Tree::wireId(folder)}});
}

Reply startCursor(Call& call) {
    static constexpr Field shape[] = {{"container", Type::text}, {"fileId", Type::text}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "container"));
    requireStart(call, folderIn(request, "fileId"));
    return success({{"startCursor", std::to_string(syncStore(call).newest())}});
}

Reply listChange(Call& call) {
    static constexpr Field shape[] = {{"container", Type::text},
                                      {"syncDirId", Type::text},
                                      {"deviceId", Type::text},
                                      {"cursor", Type::text},
                                      {"pageSize", Type::integer}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "container"));
    const auto folder = folderIn(request, "syncDirId");
    auto cursor = readCursor(call, request, requireStart(call, folder));
    const auto size = pageSize(integer(request, "pageSize", 1000), "pageSize");
    const auto page = syncStore(call).changes(folder, cursor, size);
    json::array changes;
    for (const auto& change : page.changes) {
        changes.push_back(changeFields(call, change));
        cursor = change.id;
    }
    return success({{"nextCursor", std::to_string(cursor)},
                    {"hasMore", page.hasMore},
                    {"fileChangeList", std::move(changes)}});
}

Reply walk(Call& call) {
    static constexpr Field shape[] = {{"containerId", Type::text},
                                      {"parentFileId", Type::text},
                                      {"type", Type::text},
                                      {"includeHidden", Type::boolean},
                                      {"pageInfo", Type::record, files::pageInfoShape},
                                      {"sortInfo", Type::record, files::sortInfoShape}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "containerId"));
    auto tree = call.tree();
    const auto found =
        tree.walk(tree.requireFolder(text(request, "parentFileId")), flag(request, "includeHidden", false),
                  filesAlone(text(request, "type")), files::orderedPage(request));
    json::array list;
    for (const auto& node : found.nodes) list.push_back(files::listFields(call, node));
    json::object answer{{"files", std::move(list)}};
    if (!found.nextCursor.empty()) answer["nextCursor"] = found.nextCursor;
    return success(std::move(answer));
}

}  // namespace quillboxd::sync
