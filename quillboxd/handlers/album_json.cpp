#include "quillboxd/handlers/album_json.h"

#include "quillboxd/handlers/file_json.h"
#include "quillboxd/store/users.h"

namespace quillboxd::albums {
namespace {

std::string cover(Call& call, const Album& album) {
    if (!album.cover.empty()) return album.cover;
    PageRequest first;
    first.size = 1;
    const auto page = Albums(call.service.database, call.account.id).contents(album.id, first);
    return page.nodes.empty() ? "" : files::contentUrl(call, page.nodes.front(), true);
}

const char* word(bool value) {
    return value ? "true" : "false";
}

}  // namespace

json::object albumFields(Call& call, const Album& album) {
    json::array folders;
    for (const auto folder : Albums(call.service.database, call.account.id).scope(album.id))
        folders.push_back(json::string(Tree::wireId(folder)));
    json::object fields{
        {"id", std::to_string(album.id)},  {"name", album.name},
        {"albumType", album.type},         {"albumKind", album.kind},
        {"scopeDir", std::move(folders)},  {"scopeKind", std::to_string(static_cast<int>(album.scopeKind))},
        {"createTime", album.createdTime}, {"updateTime", album.updatedTime}};
    if (album.scopeParent) fields["scopeParentFolderId"] = Tree::wireId(*album.scopeParent);
    if (const auto address = cover(call, album); !address.empty()) fields["coverImg"] = address;
    return fields;
}

json::object contentFields(Call& call, const Node& node) {
    const auto owner = Users(call.service.database).find(node.account);
    json::object fields{{"id", Tree::wireId(node.id)},
                        {"takeTime", node.createdTime},
                        {"ownerId", std::to_string(node.account)},
                        {"fileName", node.name},
                        {"mimeType", node.mimeType},
                        {"fileType", node.fileType},
                        {"fileSuffix", files::suffix(node)},
                        {"parentFolder", json::array{Tree::wireId(node.parent)}},
                        {"containers", json::array{owner ? owner->container : ""}},
                        {"createdTime", node.createdTime},
                        {"editedTime", node.editedTime},
                        {"recycled", word(node.recycled)},
                        {"contentUrl", files::contentUrl(call, node)},
                        {"favorite", word(node.starredTime && node.account == call.account.id)}};
    if (node.mimeType.starts_with("image/")) fields["thumbnailUrl"] = files::contentUrl(call, node, true);
    return fields;
}

}  // namespace quillboxd::albums
