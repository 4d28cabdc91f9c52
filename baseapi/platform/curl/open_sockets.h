#pragma once

#include <vector>

#include "baseapi/platform/curl/easy_handle.h"

namespace baseapi::inline v1 {

/// The sockets of libcurl's connections, which it does not show while they are in use.
class OpenSockets {
  public:
    OpenSockets() = default;
    OpenSockets(const OpenSockets&) = delete;
    OpenSockets& operator=(const OpenSockets&) = delete;

    /// Makes the handle's new connections known here. Must outlive them.
    void watch(EasyHandle& easy);

    /// How many bytes the kernel still has to bring to the peer of the connection with this local port; 0 for
    /// an unknown one.
    int unsentBytes(long localPort) const;

  private:
    static curl_socket_t onOpen(void* sockets, curlsocktype, curl_sockaddr* address);
    static int onClose(void* sockets, curl_socket_t socket);

    std::vector<curl_socket_t> sockets_;
};

}  // namespace baseapi::inline v1
