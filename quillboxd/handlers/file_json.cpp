#include "quillboxd/handlers/file_json.h"

#include "quillboxd/handlers/parameters.h"

namespace quillboxd::files {

std::string suffix(const Node& node) {
    const auto dot = node.name.rfind('.');
    return node.isFile && dot != node.name.npos && dot > 0 ? node.name.substr(dot + 1) : "";
}

json::object commonFields(const Node& node) {
    json::object fields{
        {"id", Tree::wireId(node.id)},     {"fileName", node.name},
        {"fileType", node.fileType},       {"mimeType", node.mimeType},
        {"recycled", node.recycled},       {"parentFolder", json::array{Tree::wireId(node.parent)}},
        {"createdTime", node.createdTime}, {"editedTime", node.editedTime},
        {"fileSuffix", suffix(node)}};
    if (node.isFile) fields["sha256"] = node.sha256;
    return fields;
}

json::object listFields(const Call& call, const Node& node) {
    auto fields = commonFields(node);
    fields["containers"] = json::array{call.account.container};
    fields["hidden"] = node.hidden;
    fields["favorite"] = node.starredTime.has_value();
    fields["size"] = node.size;
    return fields;
}

json::object allCapabilities() {
    json::object capabilities;
    for (const char* key :
         {"addChildNodePermission", "copyPermission", "deletePermission", "downloadPermission",
          "editPermission", "listChildNodePermission", "removeChildNodePermission", "renameFilePermission",
          "shareFilePermission", "uploadPermission", "viewPermission"}) {
        capabilities[key] = true;
    }
    return capabilities;
}

void addOwner(const Call& call, json::object& fields) {
    const json::object owner{{"category", "user"}, {"me", true}, {"userId", std::to_string(call.account.id)}};
    fields["containers"] = json::array{call.account.container};
    fields["owners"] = json::array{owner};
    fields["lastEditor"] = owner;
    fields["userCapabilities"] = allCapabilities();
}

std::string contentUrl(const Call& call, const Node& node, bool inlineView, std::int64_t share) {
    return call.origin +
           call.service.signer.content({.file = node.id, .share = share, .inlineView = inlineView}, now());
}

json::array downloadLinks(const Call& call, const Node& node) {
    return {json::object{
        {"usage", "content"}, {"downloadLink", contentUrl(call, node)}, {"version", node.version}}};
}

std::int64_t requireParent(Tree& tree, const json::object& request) {
    const auto* list = present(request, "parentFolder");
    if (!list || list->get_array().empty()) return 0;
    if (list->get_array().size() > 1) badRequest("\"parentFolder\" must name one folder");
    return tree.requireFolder(std::string(list->get_array()[0].get_string()));
}

void setOrder(PageRequest& page, std::int64_t sortType, std::int64_t sortDirection) {
    constexpr SortKey keys[] = {SortKey::name, SortKey::edited, SortKey::size, SortKey::created};
    page.sort = sortType >= 1 && sortType <= 4 ? keys[sortType - 1] : SortKey::name;
    page.descending = sortDirection == 1;
}

PageRequest pageRequest(const json::object& record) {
    PageRequest page;
    if (!present(record, "pageInfo")) return page;
    const auto info = quillboxd::record(record, "pageInfo");
    page.size = pageSize(requiredInteger(info, "pageSize"), "pageInfo.pageSize");
    page.cursor = text(info, "pageCursor");
    return page;
}

PageRequest orderedPage(const json::object& record) {
    auto page = pageRequest(record);
    const auto sort = quillboxd::record(record, "sortInfo");
    setOrder(page, integer(sort, "sortType", 1), integer(sort, "sortDirection", 0));
    return page;
}

}  // namespace quillboxd::files
