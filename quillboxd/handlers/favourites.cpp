#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"

namespace quillboxd::favourites {
namespace {

/// How much of a batch was done; the numbers stand on the wire.
enum class BatchStatus { all = 0, some = 1, none = 2 };

/// Those of every listing; without one, what was starred last comes first.
void setOrder(PageRequest& page, std::int64_t sortType, std::int64_t sortDirection) {
    files::setOrder(page, sortType, sortDirection);
    if (sortType >= 1 && sortType <= 4) return;
    page.sort = SortKey::starred;
    page.descending = !page.descending;
}

PageRequest pageRequest(const Call& call) {
    PageRequest page;
    page.size = pageSize(integerParameter(call, "pageSize", page.size), "pageSize");
    page.cursor = call.request.parameter("pageCursor").value_or("");
    setOrder(page, integerParameter(call, "sortType", 0), integerParameter(call, "sortDirection", 0));
    return page;
}

json::object item(const Call& call, const Node& node) {
    auto fields = files::commonFields(node);
    files::addOwner(call, fields);
    fields["favorite"] = true;
    fields["hidden"] = node.hidden;
    fields["size"] = node.size;
    fields["starredTime"] = node.starredTime.value_or("");
    fields["filePath"] = namePath(call.tree().path(node));
    if (node.isFile) fields["downloadLinks"] = files::downloadLinks(call, node);
    return fields;
}

void change(const Call& call, const json::object& entry, bool starred) {
    call.checkContainer(text(entry, "containerId"));
    const auto node = call.tree().require(requiredText(entry, "fileId"));
    if (node.id == 0) forbidden("the root folder is no favourite");
    call.tree().star(node.id, starred);
}

/// What became of one entry of a batch, in the form of the wire; a code of "0" is a success.
json::object tryToChange(const Call& call, const json::object& entry, bool starred) {
    json::object answer{{"fileId", text(entry, "fileId")}, {"code", "0"}, {"message", "success"}};
    try {
        change(call, entry, starred);
    } catch (const ApiError& error) {
        answer["code"] = std::to_string(static_cast<int>(error.code()));
        answer["message"] = error.what();
    }
    return answer;
}

BatchStatus statusOf(std::size_t failures, std::size_t entries) {
    if (failures == 0) return BatchStatus::all;
    return failures < entries ? BatchStatus::some : BatchStatus::none;
}

}  // namespace

Reply list(Call& call) {
    const auto found = call.tree().favourites(pageRequest(call));
    json::array list;
    for (const auto& node : found.nodes) list.push_back(item(call, node));
    json::object answer{{"starFileList", std::move(list)}};
    if (!found.nextCursor.empty()) answer["nextCursor"] = found.nextCursor;
    return success(std::move(answer));
}

Reply star(Call& call) {
    static constexpr Field entryShape[] = {{"containerId", Type::text}, {"fileId", Type::text}};
    static constexpr Field shape[] = {{"starred", Type::boolean},
                                      {"subRequestList", Type::records, entryShape}};
    const auto request = call.record(shape);
    if (!present(request, "starred")) badRequest("\"starred\" is missing");
    const auto* entries = present(request, "subRequestList");
    if (!entries) badRequest("\"subRequestList\" is missing");
    json::array answers;
    std::size_t failures = 0;
    for (const auto& entry : entries->get_array()) {
        answers.push_back(tryToChange(call, entry.get_object(), flag(request, "starred", false)));
        if (answers.back().at("code") != "0") ++failures;
    }
    const auto status = statusOf(failures, answers.size());
    return success({{"subResponseList", std::move(answers)}, {"status", static_cast<int>(status)}});
}

}  // namespace quillboxd::favourites
