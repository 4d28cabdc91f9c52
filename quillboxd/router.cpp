#include "quillboxd/router.h"

#include <algorithm>
#include <optional>

#include "quillboxd/pages/pages.h"
#include "quillboxd/same_site.h"
#include "quillboxd/store/database.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

constexpr std::size_t largestBody = 64 * 1024 * 1024;

std::string_view nextSegment(std::string_view& path) {
    path.remove_prefix(1);
    const auto segment = path.substr(0, path.find('/'));
    path.remove_prefix(segment.size());
    return segment;
}

/// What answers repeat must be text.
std::string decodedText(std::string_view segment) {
    auto text = decodePercent(segment);
    if (!isUtf8(text)) badRequest("the path is no UTF-8");
    return text;
}

/// The segments in the places of the pattern, or nothing where path and pattern differ.
std::optional<std::vector<std::string>> match(std::string_view pattern, std::string_view path) {
    std::vector<std::string> wildcards;
    while (!pattern.empty() && path.starts_with('/')) {
        const auto expected = nextSegment(pattern);
        const auto segment = nextSegment(path);
        if (expected == "*" && !segment.empty()) {
            wildcards.push_back(decodedText(segment));
        } else if (expected != segment) {
            return std::nullopt;
        }
    }
    return pattern.empty() && path.empty() ? std::optional(std::move(wildcards)) : std::nullopt;
}

/// Clients call the bare host too, where an absent record leaves them without a path, and none of them takes
/// HTML.
bool asksForStartPage(const Request& request) {
    const auto* accepted = request.header("Accept");
    return request.verb == "GET" && request.path() == "/" && accepted &&
           accepted->find("text/html") != accepted->npos;
}

const Route& findRoute(Call& call) {
    const auto path = call.request.path();
    bool pathKnown = false;
    for (const auto& route : routes()) {
        auto wildcards = match(route.pattern, path);
        if (!wildcards || (path == "/" && !asksForStartPage(call.request))) continue;
        if (route.verb != call.request.verb) {
            // A page is no endpoint: a client that calls its path has lost its way.
            pathKnown = pathKnown || route.admission != Admission::page;
            continue;
        }
        call.wildcards = std::move(*wildcards);
        return route;
    }
    const auto name = readable(std::string(path.substr(0, 200)));
    if (pathKnown) {
        throw ApiError(405, Code::verbNotAllowed,
                       "the endpoint " + name + " does not take " + call.request.verb);
    }
    notFound("there is no endpoint " + name);
}

void authorise(Call& call) {
    const auto* token = call.request.header("Authorization");
    if (!token) throw ApiError(401, Code::unauthorised, "the header Authorization is missing");
    const auto account = Accounts(call.service.database).byToken(*token);
    if (!account) throw ApiError(401, Code::unauthorised, "the token in the header Authorization is unknown");
    call.account = *account;
    call.token = *token;
}

Reply inTransaction(const Route& route, Call& call) {
    Transaction transaction(call.service.database);
    const bool visits = route.admission == Admission::visitor && call.request.header("Authorization");
    if (route.admission == Admission::account || visits) authorise(call);
    auto reply = route.handler(call);
    transaction.commit();
    return reply;
}

Reply detached(const Route& route, Call& call) {
    {
        Transaction transaction(call.service.database);
        authorise(call);
    }
    return route.handler(call);
}

Reply shown(const Route& route, Call& call) {
    try {
        requireSameSite(call);
        return inTransaction(route, call);
    } catch (const ApiError& error) {
        return pages::refusal(error);
    }
}

Reply handle(Call& call) {
    const auto& route = findRoute(call);
    if (route.admission == Admission::address) return route.handler(call);
    call.body = call.reader.readWholeBody(largestBody);
    switch (route.admission) {
        case Admission::control:
            requireSameSite(call);
            return route.handler(call);
        case Admission::page:
            return shown(route, call);
        case Admission::detached:
            return detached(route, call);
        default:
            return inTransaction(route, call);
    }
}

}  // namespace

Reply dispatch(Call& call) {
    try {
        return handle(call);
    } catch (const ApiError& error) {
        return errorReply(error);
    } catch (const ConnectionLost&) {
        throw;
    } catch (const std::exception& error) {
        return errorReply(ApiError(500, Code::internal, readable(error.what())));
    }
}

bool isControl(const Request& request) {
    return request.path().starts_with("/_dev/") || asksForStartPage(request);
}

}  // namespace quillboxd
