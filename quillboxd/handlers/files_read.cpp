#include <array>
#include <chrono>

#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/store/database.h"
#include "quillboxd/store/revisions.h"

namespace quillboxd::files {
namespace {

constexpr Field sortTexts[] = {{"sortType", Type::text}, {"sortDirection", Type::text}};

SortKey sortKey(const std::string& name) {
    if (name == "2" || name == "editedTime") return SortKey::edited;
    if (name == "3" || name == "size") return SortKey::size;
    if (name == "4" || name == "createdTime") return SortKey::created;
    return SortKey::name;
}

json::object foundItem(const Call& call, const Node& node) {
    auto item = commonFields(node);
    const auto path = call.tree().path(node);
    item["favorite"] = node.starredTime.has_value();
    item["size"] = std::to_string(node.size);
    item["updateTime"] = node.editedTime;
    item["containerId"] = call.account.container;
    item["ownerId"] = std::to_string(call.account.id);
    item["idPath"] = idPath(path);
    item["namePath"] = namePath(path);
    return item;
}

json::object accessedItem(const Call& call, const Node& node) {
    return {{"id", Tree::wireId(node.id)},
            {"containerId", call.account.container},
            {"name", node.name},
            {"fileType", node.fileType},
            {"favorite", node.starredTime.has_value()},
            {"fileSuffix", suffix(node)},
            {"mimeType", node.mimeType},
            {"downloadLinks", downloadLinks(call, node)},
            {"userCapabilities", allCapabilities()}};
}

json::object revisionFields(const Call& call, const Node& file, const Revision& revision) {
    const ContentAddress address{.file = file.id, .revision = revision.id};
    const json::object download{{"url", call.origin + call.service.signer.content(address, now())},
                                {"method", "GET"}};
    const json::object resource{{"length", revision.size},
                                {"sha256", revision.sha256},
                                {"object", {{"start", 0}, {"downloadUrl", download}}}};
    return {{"usage", "revision"},
            {"sha256", revision.sha256},
            {"asset",
             {{"versionId", std::to_string(revision.id)},
              {"version", revision.number},
              {"mimeType", file.mimeType},
              {"state", revision.kept ? 1 : 0},
              {"createdTime", revision.createdTime},
              {"resource", resource}}}};
}

/// The newest first.
json::array revisionList(const Call& call, const Node& file) {
    json::array list;
    for (const auto& each : Revisions(call.service.database).list(file.id))
        list.push_back(revisionFields(call, file, each));
    return list;
}

json::object downloadEntry(const Call& call, const std::string& id) {
    try {
        const auto file = call.tree().requireFile(id);
        return {{"fileId", id},
                {"fileName", file.name},
                {"url", contentUrl(call, file)},
                {"code", "0"},
                {"msg", "success"}};
    } catch (const ApiError& error) {
        return {
            {"fileId", id}, {"code", std::to_string(static_cast<int>(error.code()))}, {"msg", error.what()}};
    }
}

}  // namespace

Reply access(Call& call) {
    json::array list;
    for (const auto& entry : call.accesses().latest()) {
        const auto node = call.tree().find(entry.node);
        if (!node) continue;
        list.push_back({{"operateTime", std::to_string(entry.millis)},
                        {"operateType", static_cast<int>(entry.kind)},
                        {"file", accessedItem(call, *node)},
                        {"status", 0}});
    }
    return success({{"list", std::move(list)}});
}

Reply list(Call& call) {
    static constexpr Field shape[] = {{"type", Type::text},
                                      {"pageInfo", Type::record, pageInfoShape},
                                      {"sortInfo", Type::record, sortInfoShape},
                                      {"containerId", Type::text},
                                      {"parentFileId", Type::text},
                                      {"fileType", Type::text},
                                      {"hidden", Type::boolean},
                                      {"imageProcess", Type::text}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "containerId"));
    const auto page = orderedPage(request);
    auto tree = call.tree();
    const auto folder = tree.requireFolder(text(request, "parentFileId"));
    const auto found = tree.list(folder, flag(request, "hidden", false), text(request, "fileType"), page);
    json::array files;
    files.reserve(found.nodes.size());
    for (const auto& node : found.nodes) files.push_back(listFields(call, node));
    json::object answer{{"files", std::move(files)},
                        {"category", call.wildcards[0]},
                        {"searchCompleted", found.nextCursor.empty()}};
    if (!found.nextCursor.empty()) answer["nextCursor"] = found.nextCursor;
    return success(std::move(answer));
}

Reply search(Call& call) {
    static constexpr Field filterShape[] = {{"keyWord", Type::text},         {"containerId", Type::text},
                                            {"parentFolder", Type::text},    {"fileType", Type::text},
                                            {"updateTimeRange", Type::text}, {"ownerId", Type::text}};
    static constexpr Field shape[] = {{"searchType", Type::text},
                                      {"pageInfo", Type::record, pageInfoShape},
                                      {"filter", Type::record, filterShape},
                                      {"sortInfo", Type::record, sortTexts},
                                      {"recycled", Type::boolean},
                                      {"recursived", Type::boolean},
                                      {"imageProcess", Type::text}};
    const auto request = call.record(shape);
    const auto wanted = record(request, "filter");
    call.checkContainer(text(wanted, "containerId"));
    const auto sort = record(request, "sortInfo");
    auto page = pageRequest(request);
    page.sort = sortKey(text(sort, "sortType"));
    page.descending = text(sort, "sortDirection") == "1" || text(sort, "sortDirection") == "desc";

    auto tree = call.tree();
    SearchFilter filter{.keyWord = text(wanted, "keyWord"),
                        .folder = std::nullopt,
                        .recursive = flag(request, "recursived", false),
                        .recycled = flag(request, "recycled", false),
                        .fileType = text(wanted, "fileType")};
    const auto folder = text(wanted, "parentFolder");
    if (!folder.empty()) filter.folder = tree.requireFolder(folder);
    const auto found = tree.search(filter, page);
    json::array files;
    for (const auto& node : found.nodes) files.push_back(foundItem(call, node));
    json::object answer{{"files", std::move(files)}, {"total", tree.countMatches(filter)}};
    if (!found.nextCursor.empty()) answer["nextPageCursor"] = found.nextCursor;
    return success(std::move(answer));
}

Reply path(Call& call) {
    call.checkContainer(call.request.parameter("containerId").value_or(""));
    auto tree = call.tree();
    const auto path = tree.path(tree.require(call.request.parameter("fileId").value_or("")));
    return success({{"fileIdPath", idPath(path)}, {"namePath", namePath(path)}});
}

Reply statsDir(Call& call) {
    call.checkContainer(call.request.parameter("containerId").value_or(""));
    const auto recursive = call.request.parameter("recursive").value_or("true");
    if (recursive != "true" && recursive != "false") badRequest("\"recursive\" must be true or false");
    auto tree = call.tree();
    const auto folder = tree.requireFolder(call.request.parameter("fileId").value_or(""));
    const auto stats = tree.stats(folder, recursive == "true");
    return success({{"data",
                     {{"totalSize", std::to_string(stats.size)},
                      {"subDirCount", std::to_string(stats.folders)},
                      {"subFileCount", std::to_string(stats.files)}}}});
}

Reply downloadUrls(Call& call) {
    static constexpr Field shape[] = {{"containerId", Type::text}, {"fileIds", Type::texts}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "containerId"));
    const auto* ids = present(request, "fileIds");
    if (!ids) badRequest("\"fileIds\" is missing");
    json::array downloads;
    bool complete = true;
    for (const auto& id : ids->get_array()) {
        downloads.push_back(downloadEntry(call, std::string(id.get_string())));
        complete = complete && downloads.back().at("code") == "0";
    }
    return success({{"batchCode", complete ? 0 : static_cast<int>(Code::notFound)},
                    {"downloads", std::move(downloads)}});
}

Reply detail(Call& call) {
    static constexpr Field shape[] = {
        {"fileId", Type::text}, {"containerId", Type::text}, {"imageProcess", Type::text}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "containerId"));
    const auto node = call.tree().require(call.wildcards[0]);
    auto fields = commonFields(node);
    addOwner(call, fields);
    fields["size"] = node.size;
    if (node.isFile) {
        fields["downloadLinks"] = downloadLinks(call, node);
        fields["attachments"] = revisionList(call, node);
        call.accesses().note(node.id, AccessKind::viewed);
    }
    return success(std::move(fields));
}

Reply previewLink(Call& call) {
    const auto file = call.tree().requireFile(call.wildcards[0]);
    return success({{"link", contentUrl(call, file, true)}});
}

}  // namespace quillboxd::files
