#include "quillboxd/store/share_folders.h"

#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/handlers/share_folder_access.h"
#include "quillboxd/store/albums.h"
#include "quillboxd/store/users.h"

namespace quillboxd::sharefolders {
namespace {

constexpr const char* albumRootName = "albums";

json::object folderFields(const ShareFolder& folder) {
    json::object fields{{"tenantId", Users::tenant},
                        {"creator", std::to_string(folder.owner)},
                        {"createTime", folder.createdTime},
                        {"ownerId", folder.owner},
                        {"status", static_cast<int>(folder.status())},
                        {"id", std::to_string(folder.id)},
                        {"containerId", folder.container},
                        {"shareFolderFileId", Tree::wireId(folder.node)},
                        {"name", folder.name},
                        {"ownerName", folder.ownerName},
                        {"groupId", folder.id},
                        {"maxMember", ShareFolder::mostMembers}};
    if (folder.albumRoot) fields["albumRootFileId"] = Tree::wireId(*folder.albumRoot);
    return fields;
}

/// The folder that a body names; only its owner may change it.
ShareFolder requireOwn(Call& call, const json::object& request) {
    auto folder = requireShareFolder(call, requiredText(request, "id"));
    if (folder.owner != call.account.id) forbidden("only the owner of the share folder may do this");
    return folder;
}

struct Slice {
    std::int64_t offset = 0;
    std::int64_t limit = 0;
};

/// offset and limit of the query; a limit of 0 is the largest.
Slice slice(const Call& call) {
    const auto offset = integerParameter(call, "offset", 0);
    if (offset < 0) badRequest("\"offset\" must not be negative");
    const auto limit = integerParameter(call, "limit", 0);
    return {offset, pageSize(limit == 0 ? 1000 : limit, "limit")};
}

ShareFolderFilter filter(const Call& call) {
    ShareFolderFilter filter;
    filter.keyWord = call.request.parameter("keyWord").value_or("");
    if (!call.request.parameter("status").value_or("").empty()) {
        const auto status = integerParameter(call, "status", 0);
        if (status < 0 || status > 1) badRequest("\"status\" must be 0 (open) or 1 (full)");
        filter.status = static_cast<ShareFolderStatus>(status);
    }
    const auto query = integerParameter(call, "queryType", 0);
    if (query < 0 || query > 2) badRequest("\"queryType\" must be 0 (all), 1 (own) or 2 (joined)");
    filter.query = static_cast<ShareFolderQuery>(query);
    return filter;
}

json::object albumFields(const Album& album) {
    json::object fields{{"creator", std::to_string(album.account)},
                        {"createTime", album.createdTime},
                        {"modifyTime", album.updatedTime},
                        {"status", 0},
                        {"name", album.name}};
    if (album.node) fields["fileId"] = Tree::wireId(*album.node);
    return fields;
}

}  // namespace

ShareFolders folderStore(Call& call) {
    return {call.service.database, call.account.id};
}

ShareFolder requireShareFolder(Call& call, std::string_view id) {
    const auto number = Tree::fromWireId(id);
    auto folder = number ? folderStore(call).find(*number) : std::nullopt;
    if (!folder) notFound("there is no share folder \"" + std::string(id) + "\"");
    return *std::move(folder);
}

std::int64_t addAlbumFolder(Call& call, const ShareFolder& folder, const std::string& name) {
    Tree tree(call.service.database, folder.owner);
    auto root = folder.albumRoot;
    if (!root) {
        root = tree.addFolder(folder.node, albumRootName).id;
        folderStore(call).setAlbumRoot(folder.id, *root);
    }
    return tree.addFolder(*root, name).id;
}

Reply create(Call& call) {
    static constexpr Field shape[] = {
        {"shareType", Type::integer}, {"containerId", Type::text}, {"name", Type::text}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "containerId"));
    auto tree = call.tree();
    const auto node = tree.addFolder(0, requiredText(request, "name")).id;
    const auto folder = folderStore(call).add(node, tree.addFolder(node, albumRootName).id);
    const auto id = std::to_string(folder.id);
    return success({{"id", id},
                    {"data",
                     {{"tenantId", Users::tenant},
                      {"creator", std::to_string(folder.owner)},
                      {"createTime", folder.createdTime},
                      {"groupId", folder.id},
                      {"id", id},
                      {"shareFolderId", id}}}});
}

Reply rename(Call& call) {
    static constexpr Field shape[] = {{"id", Type::text}, {"fileName", Type::text}};
    const auto request = call.record(shape);
    const auto folder = requireOwn(call, request);
    const auto name = requiredText(request, "fileName");
    if (name != folder.name) {
        checkName(name);
        auto tree = call.tree();
        const auto parent = tree.require(Tree::wireId(folder.node)).parent;
        tree.rename(folder.node, tree.chooseName(parent, name, false, NameRule::refuse));
    }
    return success({{"id", std::to_string(folder.id)}});
}

Reply remove(Call& call) {
    static constexpr Field shape[] = {{"id", Type::text}};
    folderStore(call).remove(requireOwn(call, call.record(shape)).id);
    return success();
}

Reply detail(Call& call) {
    const auto folder = requireShareFolder(call, call.wildcards[0]);
    return success({{"total", folder.members}, {"shareFolder", folderFields(folder)}});
}

Reply list(Call& call) {
    const auto wanted = filter(call);
    const auto [offset, limit] = slice(call);
    json::array folders;
    for (const auto& folder : folderStore(call).list(wanted, offset, limit))
        folders.push_back(folderFields(folder));
    return success({{"total", folderStore(call).count(wanted)}, {"folders", std::move(folders)}});
}

Reply albums(Call& call) {
    const auto [offset, limit] = slice(call);
    const auto id = requiredParameter(call, "shareFolderId");
    if (id.empty()) badRequest("\"shareFolderId\" is empty");
    AlbumFilter wanted;
    wanted.shareFolder = requireShareFolder(call, id).id;
    wanted.keyWord = call.request.parameter("keyWord").value_or("");
    Albums store(call.service.database, call.account.id);
    json::array list;
    for (const auto& album : store.list(wanted, offset, limit)) list.push_back(albumFields(album));
    return success({{"total", store.count(wanted)}, {"folders", std::move(list)}});
}

}  // namespace quillboxd::sharefolders
