#include "baseapi/platform/curl/open_sockets.h"

#include <linux/sockios.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace baseapi::inline v1 {
namespace {

long localPortOf(curl_socket_t socket) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
    // IPv4 and IPv6 have the port in the same place.
    return ntohs(reinterpret_cast<const sockaddr_in*>(&address)->sin_port);
}

}  // namespace

void OpenSockets::watch(EasyHandle& easy) {
    easy.set(CURLOPT_OPENSOCKETFUNCTION, &OpenSockets::onOpen);
    easy.set(CURLOPT_OPENSOCKETDATA, this);
    easy.set(CURLOPT_CLOSESOCKETFUNCTION, &OpenSockets::onClose);
    easy.set(CURLOPT_CLOSESOCKETDATA, this);
}

int OpenSockets::unsentBytes(long localPort) const {
    for (const auto socket : sockets_) {
        int unsent = 0;
        if (localPortOf(socket) == localPort && ::ioctl(socket, SIOCOUTQ, &unsent) == 0) return unsent;
    }
    return 0;
}

curl_socket_t OpenSockets::onOpen(void* sockets, curlsocktype, curl_sockaddr* address) {
    const int socket = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    if (socket >= 0) static_cast<OpenSockets*>(sockets)->sockets_.push_back(socket);
    return socket >= 0 ? socket : CURL_SOCKET_BAD;
}

int OpenSockets::onClose(void* sockets, curl_socket_t socket) {
    std::erase(static_cast<OpenSockets*>(sockets)->sockets_, socket);
    return ::close(socket);
}

}  // namespace baseapi::inline v1
