#pragma once

#include <string>

#include "quillboxd/http/stream.h"
#include "quillboxd/service.h"
#include "quillboxd/unique_fd.h"

namespace quillboxd {

/// What all connections of a server have in common.
struct ServerContext {
    Service& service;
    const TlsContext* tls = nullptr;
    std::string address;  ///< "127.0.0.1:port"
    bool verbose = false;
};

/// Answers the requests of one connection until it ends.
void serveConnection(const ServerContext& context, UniqueFd& socket);

}  // namespace quillboxd
