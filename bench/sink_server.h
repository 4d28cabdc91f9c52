#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "bench/sink_answers.h"

namespace bench {

/// A lean HTTP/1.1 server on a free port of the loopback address: one thread, connections kept alive, large
/// bodies received into and sent from one reused buffer.
class SinkServer {
  public:
    SinkServer();
    ~SinkServer();

    int port() const { return port_; }

    /// Serves until the process ends.
    [[noreturn]] void run();

  private:
    struct Connection;

    void accept();
    void receive(Connection& connection);
    void takeRequests(Connection& connection);
    void answer(Connection& connection);
    void send(Connection& connection);
    void watch(Connection& connection, bool forRoom);
    void close(Connection& connection);

    int listener_;
    int epoll_;
    int port_;
    std::uint64_t accepted_ = 0;
    std::vector<char> buffer_;
    std::map<int, std::unique_ptr<Connection>> connections_;
    SinkAnswers answers_;
};

}  // namespace bench
