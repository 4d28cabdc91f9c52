#include "quillboxd/handlers/share_json.h"

#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/share_audience.h"
#include "quillboxd/handlers/share_visit.h"

namespace quillboxd::shares {
namespace {

json::object linkFields(const Call& call, const Share& share) {
    json::object fields{{"shareId", std::to_string(share.id)},
                        {"shortUrl", share.shortUrl},
                        {"linkUrl", call.origin + "/s/" + share.shortUrl},
                        {"comment", share.comment}};
    if (!share.expireTime.empty()) fields["expireTime"] = share.expireTime;
    return fields;
}

void addCode(json::object& fields, const Share& share) {
    if (!share.extractCode.empty()) fields["extractCode"] = share.extractCode;
}

void addCounts(json::object& fields, const Share& share) {
    fields["viewCnt"] = share.views;
    fields["downloadCnt"] = share.downloads;
    fields["saveCnt"] = 0;  // no call saves the files of a link
}

json::object ownFields(const Call& call, const Share& share) {
    auto fields = linkFields(call, share);
    fields["shareTime"] = share.shareTime;
    fields["scope"] = static_cast<int>(share.scope);
    fields["displayName"] = share.title;
    fields["status"] = static_cast<int>(share.status());
    return fields;
}

json::object fileFields(const Node& node) {
    return {{"id", Tree::wireId(node.id)},
            {"fileName", node.name},
            {"fileType", node.fileType},
            {"size", node.size},
            {"fileSuffix", files::suffix(node)}};
}

json::object ownFile(const Call& call, const Node& node) {
    auto fields = fileFields(node);
    fields["containers"] = json::array{call.account.container};
    fields["parentFolder"] = json::array{Tree::wireId(node.parent)};
    fields["mimeType"] = node.mimeType;
    fields["recycled"] = node.recycled;
    if (node.isFile) fields["downloadLinks"] = files::downloadLinks(call, node);
    return fields;
}

json::object downloadLink(const Call& call, const Share& share, const Node& node, bool inlineView) {
    return {{"usage", inlineView ? "preview" : "content"},
            {"downloadLink", files::contentUrl(call, node, inlineView, share.id)},
            {"version", node.version}};
}

}  // namespace

json::object createdLink(const Call& call, const Share& share) {
    auto fields = linkFields(call, share);
    addCode(fields, share);
    return fields;
}

json::object changedLink(const Call& call, const Share& share) {
    auto fields = ownFields(call, share);
    addCode(fields, share);
    addCounts(fields, share);
    fields["createTime"] = share.shareTime;
    fields["updateTime"] = share.updateTime;
    return fields;
}

json::object detailedLink(Call& call, const Share& share) {
    auto fields = ownFields(call, share);
    addCode(fields, share);
    const auto& [preview, edit, download] = share.permission;
    fields["permission"] = {{"preview", preview}, {"edit", edit}, {"download", download}};
    for (const auto& key : audienceKeys) {
        json::array list;
        for (const auto& id : Shares(call.service.database).audience(share.id, key.kind))
            list.push_back({{"id", id}, {"name", audienceName(call, key.kind, id).value_or("")}});
        fields[key.list] = std::move(list);
    }
    return fields;
}

json::object listedLink(Call& call, const Share& share) {
    auto fields = ownFields(call, share);
    addCounts(fields, share);
    json::array list;
    for (const auto& node : Shares(call.service.database).files(share.id, "", {.size = 10}).nodes)
        list.push_back(ownFile(call, node));
    fields["files"] = std::move(list);
    fields["containerId"] = call.account.container;
    fields["containerName"] = ownerName(call, share);
    return fields;
}

json::object visitedLink(Call& call, const Share& share) {
    const char* permission = isOwner(call, share) ? "ADMIN" : share.permission.edit ? "WRITE" : "READ";
    json::object fields{{"shareId", std::to_string(share.id)},
                        {"shortUrl", share.shortUrl},
                        {"shareTime", share.shareTime},
                        {"ownerId", std::to_string(share.account)},
                        {"ownerName", ownerName(call, share)},
                        {"permission", permission},
                        {"status", static_cast<int>(share.status())}};
    if (share.expireTime.empty()) return fields;
    fields["expireTime"] = share.expireTime;
    fields["expireDate"] = share.expireTime.substr(0, 10);
    return fields;
}

json::object visitedFile(const Call& call, const Share& share, const Node& node, bool inFolder) {
    auto fields = fileFields(node);
    fields["editedTime"] = node.editedTime;
    if (inFolder) fields["parentFolder"] = json::array{Tree::wireId(node.parent)};
    if (!node.isFile) return fields;
    json::array links;
    if (share.permission.download) links.push_back(downloadLink(call, share, node, false));
    if (share.permission.preview) links.push_back(downloadLink(call, share, node, true));
    fields["downloadLinks"] = std::move(links);
    return fields;
}

}  // namespace quillboxd::shares
