#include "quillboxd/store/albums.h"

#include <algorithm>

#include "quillboxd/handlers/album_json.h"
#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/handlers/share_folder_access.h"

namespace quillboxd::albums {
namespace {

Albums albumStore(Call& call) {
    return {call.service.database, call.account.id};
}

Album requireAlbum(Call& call) {
    const auto& id = call.wildcards[0];
    const auto number = Tree::fromWireId(id);
    auto album = number ? albumStore(call).find(*number) : std::nullopt;
    if (!album) notFound("there is no album \"" + id + "\"");
    return *std::move(album);
}

/// An album that the caller may change: those of a share folder are its owner's too.
Album requireChangeable(Call& call) {
    auto album = requireAlbum(call);
    if (album.account == call.account.id) return album;
    const auto folder = sharefolders::requireShareFolder(call, std::to_string(*album.shareFolder));
    if (folder.owner != call.account.id)
        forbidden("only who made the album, or owns its share folder, may do this");
    return album;
}

ScopeKind scopeKind(std::int64_t number) {
    if (number != 1 && number != 2)
        badRequest("\"scopeKind\" must be 1 (with the folders below) or 2 (without)");
    return static_cast<ScopeKind>(number);
}

std::int64_t numberOr(const json::object& request, std::string_view key, std::int64_t otherwise) {
    const auto value = text(request, key);
    return value.empty() ? otherwise : numberIn(value, "\"" + std::string(key) + "\"");
}

std::int64_t scopeFolder(Call& call, const std::string& id) {
    const auto folder = call.tree().requireFolder(id);
    if (folder == 0) forbidden("the root folder cannot be the scope of an album");
    return folder;
}

bool liesIn(Call& call, std::int64_t folder, std::int64_t outer) {
    auto tree = call.tree();
    const auto path = tree.path(*tree.find(folder));
    return std::any_of(path.begin(), path.end(), [&](const Node& step) { return step.id == outer; });
}

/// The folders of the scope that a request names: the parent itself where it names no other.
std::vector<std::int64_t> scopeFolders(Call& call, const Album& album, const std::vector<std::string>& ids) {
    std::vector<std::int64_t> folders;
    for (const auto& id : ids) {
        folders.push_back(scopeFolder(call, id));
        if (album.scopeParent && !liesIn(call, folders.back(), *album.scopeParent))
            badRequest("the folder \"" + id + "\" is not in \"scopeParentFolderId\"");
    }
    if (folders.empty() && album.scopeParent) folders.push_back(*album.scopeParent);
    if (album.node) folders.push_back(*album.node);
    return folders;
}

void setScopeParent(Call& call, Album& album, const json::object& request) {
    const auto parent = optionalText(request, "scopeParentFolderId");
    if (!parent) return;
    album.scopeParent = parent->empty() ? std::nullopt : std::optional(scopeFolder(call, *parent));
}

void requireFreeName(Call& call, const Album& album) {
    if (albumStore(call).nameTaken(album))
        conflict(Code::nameExists, "there is an album \"" + album.name + "\" already");
}

/// The share folder that the request names by its id or by its group.
std::optional<ShareFolder> wantedFolder(Call& call, const json::object& request) {
    auto id = text(request, "groupId");
    if (present(request, "shareFolderId")) {
        const auto folder = std::to_string(integer(request, "shareFolderId", 0));
        if (!id.empty() && id != folder) badRequest("\"groupId\" is not the group of \"shareFolderId\"");
        id = folder;
    }
    return id.empty() ? std::nullopt : std::optional(sharefolders::requireShareFolder(call, id));
}

void renameFolder(Call& call, const Album& album) {
    const auto folder = sharefolders::requireShareFolder(call, std::to_string(*album.shareFolder));
    Tree tree(call.service.database, folder.owner);
    const auto node = tree.require(Tree::wireId(*album.node));
    checkName(album.name);
    tree.rename(node.id, tree.chooseName(node.parent, album.name, false, NameRule::refuse));
}

void setName(Call& call, Album& album, const json::object& request) {
    if (!present(request, "name") || text(request, "name") == album.name) return;
    album.name = requiredText(request, "name");
    requireFreeName(call, album);
    if (album.node) renameFolder(call, album);
}

std::int64_t ownFile(Call& call, const json::object& wanted) {
    const auto id = requiredText(wanted, "fileId");
    const auto owner = text(wanted, "ownerId");
    if (!owner.empty() && owner != std::to_string(call.account.id))
        forbidden("the file \"" + id + "\" is not the caller's own");
    return call.tree().requireFile(id).id;
}

}  // namespace

Reply create(Call& call) {
    static constexpr Field shape[] = {{"name", Type::text},       {"type", Type::text},
                                      {"scopeDir", Type::texts},  {"scopeParentFolderId", Type::text},
                                      {"scopeKind", Type::text},  {"groupId", Type::text},
                                      {"albumKind", Type::text},  {"shareFolderId", Type::integer},
                                      {"containerId", Type::text}};
    const auto request = call.record(shape);
    const auto folder = wantedFolder(call, request);
    if (!folder) call.checkContainer(text(request, "containerId"));
    Album album;
    album.name = requiredText(request, "name");
    album.type = numberOr(request, "type", album.type);
    album.kind = numberOr(request, "albumKind", album.kind);
    album.scopeKind = scopeKind(numberOr(request, "scopeKind", 1));
    setScopeParent(call, album, request);
    if (folder) album.shareFolder = folder->id;
    requireFreeName(call, album);
    if (folder) album.node = sharefolders::addAlbumFolder(call, *folder, album.name);
    const auto made = albumStore(call).add(album);
    albumStore(call).setScope(made.id, scopeFolders(call, made, texts(request, "scopeDir")));
    return success({{"albumId", std::to_string(made.id)}});
}

Reply update(Call& call) {
    static constexpr Field shape[] = {{"scopeParentFolderId", Type::text},
                                      {"scopeDirList", Type::texts},
                                      {"scopeKind", Type::integer},
                                      {"cover_image_url", Type::text},
                                      {"name", Type::text}};
    const auto request = call.record(shape);
    auto album = requireChangeable(call);
    setName(call, album, request);
    setScopeParent(call, album, request);
    album.scopeKind = scopeKind(integer(request, "scopeKind", static_cast<int>(album.scopeKind)));
    album.cover = text(request, "cover_image_url", album.cover);
    albumStore(call).change(album);
    if (present(request, "scopeDirList") || present(request, "scopeParentFolderId"))
        albumStore(call).setScope(album.id, scopeFolders(call, album, texts(request, "scopeDirList")));
    return success();
}

Reply remove(Call& call) {
    albumStore(call).remove(requireChangeable(call).id);
    return success();
}

Reply list(Call& call) {
    constexpr std::int64_t mostPages = 1'000'000'000;
    AlbumFilter filter;
    filter.kind = integerParameter(call, "albumKind", 0);
    filter.type = integerParameter(call, "albumType", 0);
    if (const auto user = integerParameter(call, "userId", 0)) filter.creator = user;
    if (const auto group = integerParameter(call, "groupId", 0)) filter.shareFolder = group;
    const auto size = pageSize(integerParameter(call, "pageSize", 100), "pageSize");
    const auto number = std::clamp<std::int64_t>(integerParameter(call, "pageNum", 1), 1, mostPages);
    const auto total = albumStore(call).count(filter);
    json::array albums;
    for (const auto& album : albumStore(call).list(filter, (number - 1) * size, size))
        albums.push_back(albumFields(call, album));
    json::object answer{{"total", total}, {"albumList", std::move(albums)}};
    if (number * size < total) answer["nextPageCursor"] = std::to_string(number + 1);
    return success(std::move(answer));
}

Reply contents(Call& call) {
    const auto album = requireAlbum(call);
    PageRequest page;
    page.size = pageSize(integerParameter(call, "pageSize", 100), "pageSize");
    page.cursor = call.request.parameter("pageCursor").value_or("");
    files::setOrder(page, integerParameter(call, "sortType", 1), integerParameter(call, "sortDirection", 0));
    const auto found = albumStore(call).contents(album.id, page);
    json::array list;
    for (const auto& node : found.nodes) list.push_back(contentFields(call, node));
    json::object answer{{"total", albumStore(call).countContents(album.id)},
                        {"contentList", std::move(list)}};
    if (!found.nextCursor.empty()) answer["nextPageCursor"] = found.nextCursor;
    return success(std::move(answer));
}

Reply addContents(Call& call) {
    static constexpr Field fileShape[] = {{"fileId", Type::text}, {"ownerId", Type::text}};
    static constexpr Field shape[] = {{"fileIds", Type::records, fileShape}};
    const auto request = call.record(shape);
    const auto album = requireAlbum(call);
    const auto* wanted = present(request, "fileIds");
    if (!wanted || wanted->get_array().empty()) badRequest("\"fileIds\" is missing or empty");
    for (const auto& file : wanted->get_array())
        albumStore(call).include(album.id, ownFile(call, file.get_object()));
    return success();
}

Reply removeContent(Call& call) {
    static constexpr Field shape[] = {
        {"id", Type::text},          {"takeTime", Type::text},      {"ownerId", Type::text},
        {"fileName", Type::text},    {"mimeType", Type::text},      {"fileType", Type::text},
        {"fileSuffix", Type::text},  {"parentFolder", Type::texts}, {"containers", Type::texts},
        {"createdTime", Type::text}, {"editedTime", Type::text},    {"recycled", Type::text},
        {"contentUrl", Type::text},  {"thumbnailUrl", Type::text},  {"favorite", Type::text}};
    const auto id = requiredText(call.record(shape), "id");
    const auto album = requireAlbum(call);
    const auto file = Tree::fromWireId(id);
    if (!file || !albumStore(call).exclude(album.id, *file))
        notFound("the album holds no file \"" + id + "\"");
    return success();
}

}  // namespace quillboxd::albums
