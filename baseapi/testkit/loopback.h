#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace baseapi::inline v1::testkit {

/// A socket to a service on this machine; -1 where none listens. It waits a minute for an answer.
inline int connectTo(std::uint16_t port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const timeval limit{60, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return socket;
    ::close(socket);
    return -1;
}

/// Sends a body to a service on this machine, over plain HTTP; gives the status of the answer, or 0 where
/// there is none.
inline int post(std::uint16_t port, std::string_view path, std::string_view body) {
    const int socket = connectTo(port);
    if (socket < 0) return 0;
    const auto request = "POST " + std::string(path) +
                         " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n" +
                         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + std::string(body);
    std::string answer;
    if (::send(socket, request.data(), request.size(), MSG_NOSIGNAL) ==
        static_cast<ssize_t>(request.size())) {
        char bytes[512];
        for (ssize_t size; (size = ::recv(socket, bytes, sizeof bytes, 0)) > 0;)
            answer.append(bytes, static_cast<std::size_t>(size));
    }
    ::close(socket);
    constexpr std::string_view protocol = "HTTP/1.1 ";
    return answer.starts_with(protocol) ? std::atoi(answer.c_str() + protocol.size()) : 0;
}

}  // namespace baseapi::inline v1::testkit
