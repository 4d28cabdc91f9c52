#include "quillboxd/store/shares.h"

#include <chrono>

#include "quillboxd/handlers/file_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/handlers/share_audience.h"
#include "quillboxd/handlers/share_json.h"
#include "quillboxd/handlers/share_visit.h"

namespace quillboxd::shares {
namespace {

constexpr Field permissionShape[] = {
    {"preview", Type::boolean}, {"edit", Type::boolean}, {"download", Type::boolean}};

Shares shareStore(Call& call) {
    return Shares(call.service.database);
}

/// The caller's own link; those of others are as if they were not there.
Share requireOwn(Call& call, const std::string& id) {
    const auto number = Tree::fromWireId(id);
    const auto share = number ? shareStore(call).find(*number) : std::nullopt;
    if (!share || share->account != call.account.id) notFound("there is no share \"" + id + "\"");
    return *share;
}

/// Sets what the request names; the rest stays.
void setExpiry(Share& share, const json::object& request) {
    constexpr std::int64_t mostDays = 36'500;
    const auto time = optionalText(request, "expireTime");
    if (present(request, "validDays")) {
        const auto days = integer(request, "validDays", 0);
        if (time) badRequest("\"validDays\" and \"expireTime\" are two ends of one link");
        if (days < 1 || days > mostDays) badRequest("\"validDays\" must be from 1 to 36500");
        share.expireTime = timeText(std::chrono::system_clock::now() + std::chrono::hours(24 * days));
    }
    if (!time) return;
    const auto expiry = time->empty() ? std::optional(std::string()) : normalisedTime(*time);
    if (!expiry) badRequest("\"expireTime\" must be a time such as 2030-01-02T03:04:05Z");
    if (!expiry->empty() && *expiry <= timestamp()) badRequest("\"expireTime\" lies in the past");
    share.expireTime = *expiry;
}

void setTerms(Share& share, const json::object& request) {
    constexpr std::size_t longestCode = 64;
    if (present(request, "permission")) {
        const auto granted = record(request, "permission");
        share.permission = {flag(granted, "preview", false), flag(granted, "edit", false),
                            flag(granted, "download", false)};
    }
    setExpiry(share, request);
    share.extractCode = text(request, "extractCode", share.extractCode);
    if (share.extractCode.size() > longestCode) badRequest("\"extractCode\" is longer than 64 bytes");
    share.comment = text(request, "comment", share.comment);
}

/// Replaces those lists of chosen people that the request names.
void setAudience(Call& call, const Share& share, const json::object& request) {
    bool chosen = false;
    for (const auto& key : audienceKeys) {
        if (present(request, key.ids)) {
            const auto ids = texts(request, key.ids);
            for (const auto& id : ids) {
                if (!audienceName(call, key.kind, id))
                    notFound("there is no " + std::string(key.noun) + " \"" + id + "\"");
            }
            shareStore(call).setAudience(share.id, key.kind, ids);
        }
        chosen = chosen || !shareStore(call).audience(share.id, key.kind).empty();
    }
    if (share.scope == ShareScope::anybody && chosen)
        badRequest("a link of scope 0 is for anybody; only one of scope 1 names people");
    if (share.scope == ShareScope::chosen && !chosen)
        badRequest("a link of scope 1 must name a department, a group or a user");
}

std::vector<std::int64_t> sharedNodes(Call& call, const json::object& request) {
    auto tree = call.tree();
    std::vector<std::int64_t> nodes;
    for (const auto& id : texts(request, "fileIds")) {
        nodes.push_back(tree.require(id).id);
        if (nodes.back() == 0) forbidden("the root folder cannot be shared");
    }
    if (nodes.empty()) badRequest("\"fileIds\" is missing or empty");
    return nodes;
}

json::object cancelled(Call& call, const std::string& id) {
    const auto answer = [&](int code, const char* message) {
        return json::object{{"shareId", id}, {"code", code}, {"msg", message}};
    };
    const auto number = Tree::fromWireId(id);
    if (number && shareStore(call).remove(call.account.id, *number)) return answer(0, "success");
    return answer(static_cast<int>(Code::notFound), "there is no share of this id");
}

}  // namespace

Reply create(Call& call) {
    static constexpr Field shape[] = {{"scope", Type::integer},
                                      {"deptIds", Type::texts},
                                      {"groupIds", Type::texts},
                                      {"userIds", Type::texts},
                                      {"fileIds", Type::texts},
                                      {"containerId", Type::text},
                                      {"permission", Type::record, permissionShape},
                                      {"extractCode", Type::text},
                                      {"expireTime", Type::text},
                                      {"comment", Type::text},
                                      {"validDays", Type::integer},
                                      {"expiredType", Type::text}};
    const auto request = call.record(shape);
    call.checkContainer(text(request, "containerId"));
    const auto scope = integer(request, "scope", 0);
    if (scope != 0 && scope != 1) badRequest("\"scope\" must be 0 (anybody) or 1 (those who are named)");
    Share share;
    share.account = call.account.id;
    share.scope = static_cast<ShareScope>(scope);
    setTerms(share, request);
    const auto made = shareStore(call).add(share, sharedNodes(call, request));
    setAudience(call, made, request);
    return success({{"shareLink", createdLink(call, made)}});
}

Reply modify(Call& call) {
    static constexpr Field shape[] = {{"shareId", Type::text},
                                      {"deptIds", Type::texts},
                                      {"groupIds", Type::texts},
                                      {"userIds", Type::texts},
                                      {"permission", Type::record, permissionShape},
                                      {"expireTime", Type::text},
                                      {"extractCode", Type::text},
                                      {"comment", Type::text},
                                      {"validDays", Type::integer}};
    const auto request = call.record(shape);
    if (text(request, "shareId", call.wildcards[0]) != call.wildcards[0])
        badRequest("\"shareId\" is not the share of the path");
    auto share = requireOwn(call, call.wildcards[0]);
    setTerms(share, request);
    setAudience(call, share, request);
    return success({{"shareLink", changedLink(call, shareStore(call).change(share))}});
}

Reply cancel(Call& call) {
    static constexpr Field shape[] = {{"shareIds", Type::texts}};
    const auto request = call.record(shape);
    if (!present(request, "shareIds")) badRequest("\"shareIds\" is missing");
    json::array list;
    for (const auto& id : texts(request, "shareIds")) list.push_back(cancelled(call, id));
    return success({{"subResponseList", std::move(list)}});
}

Reply detail(Call& call) {
    return success({{"shareLink", detailedLink(call, requireOwn(call, call.wildcards[0]))}});
}

Reply list(Call& call) {
    constexpr std::int64_t byTitle = 1;
    SharePageRequest page;
    page.size = pageSize(integerParameter(call, "pageSize", page.size), "pageSize");
    page.cursor = call.request.parameter("pageCursor").value_or("");
    page.keyWord = call.request.parameter("displayName").value_or("");
    const auto sortType = integerParameter(call, "sortType", 0);
    page.byTitle = sortType == byTitle;
    page.descending = integerParameter(call, "sortDirection", sortType == 0 ? 1 : 0) == 1;
    auto found = shareStore(call).list(call.account.id, page);
    json::array links;
    for (const auto& share : found.shares) links.push_back(listedLink(call, share));
    json::object answer{{"shareLinks", std::move(links)}};
    if (!found.nextCursor.empty()) answer["nextCursor"] = found.nextCursor;
    return success(std::move(answer));
}

Reply files(Call& call) {
    static constexpr Field shape[] = {{"shortUrl", Type::text},    {"parentFolder", Type::text},
                                      {"pageSize", Type::integer}, {"pageCursor", Type::text},
                                      {"sortType", Type::integer}, {"sortDirection", Type::integer},
                                      {"qbstoken", Type::text},    {"refreshCount", Type::boolean},
                                      {"fileName", Type::text},    {"imageProcess", Type::text}};
    const auto request = call.record(shape);
    const auto share = requireLink(call, requiredText(request, "shortUrl"));
    const auto code = text(request, "qbstoken");
    if (!codeFits(call, share, code))
        forbidden(code.empty() ? "the link asks for its extract code, in \"qbstoken\""
                               : "the extract code is wrong");
    PageRequest page;
    page.size = pageSize(integer(request, "pageSize", 100), "pageSize");
    page.cursor = text(request, "pageCursor");
    files::setOrder(page, integer(request, "sortType", 1), integer(request, "sortDirection", 0));
    const auto folder = text(request, "parentFolder");
    const auto found = listFiles(call, share, folder, text(request, "fileName"), page);
    if (flag(request, "refreshCount", false)) shareStore(call).countView(share.id);
    json::array list;
    for (const auto& node : found.nodes) list.push_back(visitedFile(call, share, node, !folder.empty()));
    json::object answer{{"files", std::move(list)}, {"link", visitedLink(call, share)}};
    if (!found.nextCursor.empty()) answer["nextCursor"] = found.nextCursor;
    return success(std::move(answer));
}

}  // namespace quillboxd::shares
