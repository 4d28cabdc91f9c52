#include "tests/support/channel.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <climits>

namespace test_support {

Channel::Channel(int socket, SSL_CTX* context) : socket_(socket) {
    if (!context) return;
    ssl_.reset(SSL_new(context));
    SSL_set_fd(ssl_.get(), socket_);
    SSL_set_accept_state(ssl_.get());
}

Channel::~Channel() {
    ssl_.reset();
    ::close(socket_);
}

std::size_t Channel::read(char* bytes, std::size_t size) {
    const auto got = ssl_
                         ? SSL_read(ssl_.get(), bytes, static_cast<int>(std::min<std::size_t>(size, INT_MAX)))
                         : ::recv(socket_, bytes, size, 0);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

bool Channel::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto size = std::min<std::size_t>(bytes.size(), INT_MAX);
        const auto sent = ssl_ ? SSL_write(ssl_.get(), bytes.data(), static_cast<int>(size))
                               : ::send(socket_, bytes.data(), size, MSG_NOSIGNAL);
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

void Channel::close() {
    if (!open_) return;
    open_ = false;
    if (ssl_) SSL_shutdown(ssl_.get());
    ::shutdown(socket_, SHUT_RDWR);
}

void Channel::reset() {
    if (!open_) return;
    open_ = false;
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    // Connecting a TCP socket to "nothing" breaks it off without giving the descriptor away.
    const sockaddr nothing{.sa_family = AF_UNSPEC};
    ::connect(socket_, &nothing, sizeof nothing);
}

void Channel::wakeUp() {
    ::shutdown(socket_, SHUT_RDWR);
}

}  // namespace test_support
