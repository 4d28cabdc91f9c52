#pragma once

#include <string>
#include <vector>

#include "quillboxd/error.h"
#include "quillboxd/http/message.h"
#include "quillboxd/http/reader.h"
#include "quillboxd/json.h"
#include "quillboxd/service.h"
#include "quillboxd/store/accounts.h"
#include "quillboxd/store/recent_accesses.h"
#include "quillboxd/store/space.h"
#include "quillboxd/store/tree.h"

namespace quillboxd {

/// One request on its way through a handler.
struct Call {
    Service& service;
    const Request& request;
    RequestReader& reader;
    std::string origin;  ///< scheme, host and port under which the client reached the service
    std::vector<std::string> wildcards = {};  ///< what stands in the places of the route's pattern
    Account account = {};
    std::string token = {};
    std::string body = {};  ///< of an API call; other handlers read from `reader`

    json::object record(Shape shape) const { return parseRecord(body, shape); }
    Tree tree() const { return {service.database, account.id}; }
    RecentAccesses accesses() const { return {service.database, account.id}; }
    Space space() const { return {service.database, account.id, service.quota}; }
    void checkContainer(std::string_view container) const;
};

/// Seconds since 1970.
std::int64_t now();

/// An answer with the members of a plain success before its own.
Reply success(json::object fields = {});

/// An answer with this object alone.
Reply jsonReply(int status, const json::object& object);

Reply errorReply(const ApiError& error);

}  // namespace quillboxd
