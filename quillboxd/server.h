#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "quillboxd/connection.h"
#include "quillboxd/http/stream.h"
#include "quillboxd/service.h"
#include "quillboxd/unique_fd.h"

namespace quillboxd {

/// Listens on the loopback address; each connection has a thread of its own.
class Server {
  public:
    static constexpr std::size_t mostConnections = 512;

    /// Binds; throws StartError where the port is taken. Port 0 takes a free one.
    Server(Service& service, std::uint16_t port, const TlsContext* tls, bool verbose);

    std::uint16_t port() const { return port_; }

    /// Serves until `stop` becomes readable, then lets the answers under way go out and returns.
    void run(int stop);

  private:
    void accept();
    void serve(UniqueFd& socket);
    void shutDownAll(int how);
    void finish();

    ServerContext context_;
    UniqueFd listener_;
    std::uint16_t port_ = 0;
    std::mutex mutex_;
    std::condition_variable ended_;
    std::set<int> open_;
};

}  // namespace quillboxd
